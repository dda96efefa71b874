// What the library expects of the environment, of long forms and of temporary names.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>

#include "contract/wine.h"
#include "support/scratch_drives.h"
#include "support/temporary_variables.h"

namespace {

class TemporaryContract : public ScratchDrives {
  protected:
    // A name from the runtime; "null": there is none.
    static std::string name(const std::string& directory, const char* prefix) {
        return text(_tempnam(directory.empty() ? nullptr : directory.c_str(), prefix));
    }
    static std::string text(char* block) {
        const std::string result = block != nullptr ? block : "null";
        std::free(block);
        return result;
    }
    TemporaryVariables kept_;
};

TEST_F(TemporaryContract, AVariableIsSetReadAndTakenAway) {
    char* value = nullptr;
    std::size_t length = 7;
    EXPECT_EQ(_putenv("TMP=some text=x"), 0);
    EXPECT_EQ(_putenv("TMP"), -1) << "an assignment needs its sign";
    EXPECT_EQ(_dupenv_s(&value, &length, "TMP"), 0);
    EXPECT_EQ(text(value), "some text=x");
    EXPECT_EQ(length, 12u) << "the terminator counts";
    EXPECT_EQ(_putenv("TMP="), 0);
    EXPECT_EQ(_dupenv_s(&value, &length, "TMP"), 0);
    EXPECT_EQ(value, nullptr);
    EXPECT_EQ(length, 0u);
}

// Known difference: where a folder on the way is missing, Wine says that the file is.
TEST_F(TemporaryContract, TheLongFormReplacesShortNamesAndNothingElse) {
    const auto longName = c("A rather long name\\Another long name"),
               up = c() + "\\..\\" + c().substr(3);
    ASSERT_TRUE(Jw32DirectoryCreate(longName.c_str()));
    char shortForm[MAX_PATH] = "", form[MAX_PATH] = "";
    ASSERT_GT(GetShortPathNameA(longName.c_str(), shortForm, MAX_PATH), 0u);
    EXPECT_EQ(GetLongPathNameA(shortForm, form, 5), longName.size() + 1)
        << "the room that it needs";
    EXPECT_EQ(GetLongPathNameA(shortForm, form, MAX_PATH), longName.size());
    EXPECT_EQ(form, longName);
    for (const std::string& same : {std::string("C:\\"), std::string("C:"), c() + "\\", up,
                                    c() + "\\.", "c" + c().substr(1)}) {
        EXPECT_EQ(GetLongPathNameA(same.c_str(), form, MAX_PATH), same.size());
        EXPECT_EQ(form, same);
    }
    const DWORD file = ERROR_FILE_NOT_FOUND, path = ERROR_PATH_NOT_FOUND;
    const std::pair<std::string, DWORD> rows[] = {
        {c("missing"), file},
        {c("missing\\below"), onWine() ? file : path},
        {"", path},
    };
    for (const auto& [name, code] : rows) {
        SetLastError(0);
        EXPECT_EQ(GetLongPathNameA(name.c_str(), form, MAX_PATH), 0u);
        EXPECT_EQ(GetLastError(), code) << name;
    }
}

// Known differences: Wine takes three characters of the prefix at most and adds an extension. Where
// the directory that counts is missing, it has no name, and the runtime of Windows goes on with the
// next one.
TEST_F(TemporaryContract, ATemporaryNameLiesInTheFirstDirectoryThatExists) {
    const auto none = std::string(), missing = std::string("Q:\\missing"),
               null = std::string("null");
    const struct {
        std::string tmp, wanted, begin;
    } rows[] = {{c(), d(), c("jwt")},
                {c(), none, c("jwt")},
                {none, d(), d("jwt")},
                {missing, d(), onWine() ? null : d("jwt")},
                {missing, missing, onWine() ? null : "C:\\"},
                {none, missing, onWine() ? null : "C:\\"}};
    for (const auto& row : rows) {
        kept_.set(row.tmp, none);
        const auto first = name(row.wanted, "jwt"), second = name(row.wanted, "jwt");
        EXPECT_EQ(first.rfind(row.begin, 0), 0u)
            << first << " for " << row.tmp << " and " << row.wanted;
        EXPECT_EQ(first == second, first == null);
        EXPECT_FALSE(exists(first));
    }
    kept_.set(c(), none);
    EXPECT_EQ(name(none, nullptr).rfind(c() + "\\", 0), 0u);
    const auto prefixed = name(none, "prefix");
    EXPECT_EQ(prefixed.rfind(c(onWine() ? "pre" : "prefix"), 0), 0u) << prefixed;
    EXPECT_EQ(prefixed.find('.') != std::string::npos, onWine()) << prefixed;
}

}  // namespace
