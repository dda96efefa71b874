// What the library expects of the environment, of long forms and of temporary names.
#include <gmock/gmock.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>

#include "contract/wine.h"
#include "support/last_error.h"
#include "support/scratch_drives.h"
#include "support/temporary_variables.h"

namespace {

using testing::StartsWith;

class TemporaryContract : public ScratchDrives {
  protected:
    static std::string taken(char* block) {
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
    EXPECT_EQ(taken(value), "some text=x");
    EXPECT_EQ(length, 12u) << "the terminator counts";
    EXPECT_EQ(_putenv("TMP="), 0);
    EXPECT_EQ(_dupenv_s(&value, &length, "TMP"), 0);
    EXPECT_EQ(value, nullptr);
    EXPECT_EQ(length, 0u);
}

TEST_F(TemporaryContract, TheLongFormReplacesShortNamesAndNothingElse) {
    const auto longName = c("A rather long name\\Another long name");
    ASSERT_TRUE(Jw32DirectoryCreate(longName.c_str()));
    char shortForm[MAX_PATH] = "", form[MAX_PATH] = "";
    ASSERT_GT(GetShortPathNameA(longName.c_str(), shortForm, MAX_PATH), 0u);
    EXPECT_EQ(GetLongPathNameA(shortForm, form, 5), longName.size() + 1) << "the room it needs";
    const auto up = c() + "\\..\\" + c().substr(3), other = "c" + c().substr(1);
    const std::pair<std::string, std::string> rows[] = {
        {shortForm, longName},      {"C:\\", "C:\\"}, {"C:", "C:"},
        {c() + "\\.", c() + "\\."}, {up, up},         {other, other}};
    for (const auto& [given, expected] : rows) {
        EXPECT_EQ(GetLongPathNameA(given.c_str(), form, MAX_PATH), expected.size()) << given;
        EXPECT_EQ(form, expected);
    }
    const auto codeFor = [&form](const std::string& name) {
        return codeOf(GetLongPathNameA(name.c_str(), form, MAX_PATH));
    };
    EXPECT_EQ(codeFor(c("missing")), DWORD{ERROR_FILE_NOT_FOUND});
    // Known difference: where a folder on the way is missing, Wine says that the file is.
    EXPECT_TRUE(onWine() || codeFor(c("missing\\below")) == ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(codeFor(""), DWORD{ERROR_PATH_NOT_FOUND});
}

// Known differences: Wine takes three characters of the prefix at most and adds an extension. Where
// the directory that counts is missing, it has no name, and the runtime of Windows goes on with the
// next one.
TEST_F(TemporaryContract, ATemporaryNameLiesInTheFirstDirectoryThatExists) {
    // The name for the variable TMP, a wanted directory and a prefix, which is another each time.
    const auto nameFor = [this](const std::string& tmp, const char* wanted, const char* prefix) {
        kept_.set(tmp, "");
        const auto first = taken(_tempnam(wanted, prefix)),
                   second = taken(_tempnam(wanted, prefix));
        EXPECT_EQ(first == second, first == "null") << first;
        EXPECT_FALSE(exists(first)) << first;
        return first;
    };
    const auto other = d();
    const char *const wanted = other.c_str(), *const missing = "Q:\\missing";
    EXPECT_THAT(nameFor(c(), wanted, "jwt"), StartsWith(c("jwt")));
    EXPECT_THAT(nameFor(c(), nullptr, nullptr), StartsWith(c() + "\\"));
    EXPECT_THAT(nameFor("", wanted, "jwt"), StartsWith(d("jwt")));
    EXPECT_THAT(nameFor(missing, wanted, "jwt"), StartsWith(onWine() ? "null" : d("jwt")));
    EXPECT_THAT(nameFor("", missing, "jwt"), StartsWith(onWine() ? "null" : "C:\\"));
    const auto prefixed = nameFor(c(), nullptr, "prefix");
    EXPECT_THAT(prefixed, StartsWith(c(onWine() ? "pre" : "prefix")));
    EXPECT_EQ(prefixed.find('.') != prefixed.npos, onWine()) << prefixed;
}

}  // namespace
