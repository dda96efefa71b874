// What the library expects of the environment, of long forms and of temporary names.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "contract/wine.h"
#include "support/scratch_drives.h"
#include "support/temporary_variables.h"

namespace {

class Text {
  public:
    explicit Text(char* text) : text_(text) {}
    ~Text() { std::free(text_); }
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    bool isNull() const { return text_ == nullptr; }
    std::string string() const { return text_ != nullptr ? text_ : "null"; }

  private:
    char* text_;
};

class TemporaryContract : public ScratchDrives {
  protected:
    TemporaryVariables kept_;
};

TEST_F(TemporaryContract, AVariableIsSetReadAndTakenAway) {
    char* value = nullptr;
    std::size_t length = 7;
    EXPECT_EQ(_putenv("TMP=some text=x"), 0);
    EXPECT_EQ(_dupenv_s(&value, &length, "TMP"), 0);
    EXPECT_EQ(Text(value).string(), "some text=x");
    EXPECT_EQ(length, 12u) << "the terminator counts";
    EXPECT_EQ(_putenv("TMP="), 0);
    EXPECT_EQ(_dupenv_s(&value, &length, "TMP"), 0);
    EXPECT_EQ(value, nullptr);
    EXPECT_EQ(length, 0u);
}

TEST_F(TemporaryContract, AnAssignmentNeedsItsSign) {
    EXPECT_EQ(_putenv("TMP"), -1);
}

TEST_F(TemporaryContract, TheLongFormReplacesShortNamesAndNothingElse) {
    const auto name = c("A rather long name");
    ASSERT_TRUE(Jw32DirectoryCreate((name + "\\Another long name").c_str()));
    char shortForm[MAX_PATH] = "", longForm[MAX_PATH] = "";
    ASSERT_GT(GetShortPathNameA((name + "\\Another long name").c_str(), shortForm, MAX_PATH), 0u);
    const DWORD length = GetLongPathNameA(shortForm, longForm, MAX_PATH);
    EXPECT_EQ(longForm, name + "\\Another long name");
    EXPECT_EQ(length, std::string(longForm).size());
    EXPECT_EQ(GetLongPathNameA(shortForm, longForm, 5), length + 1) << "the room that it needs";
    for (const std::string& same :
         {std::string("C:\\"), std::string("C:"), c() + "\\", c() + "\\..\\" + c().substr(3),
          c() + "\\.", "c" + c().substr(1)}) {
        EXPECT_EQ(GetLongPathNameA(same.c_str(), longForm, MAX_PATH), same.size());
        EXPECT_EQ(longForm, same);
    }
}

// Known difference: where a folder on the way is missing, Wine says that the file is.
TEST_F(TemporaryContract, WhatDoesNotExistHasNoLongForm) {
    char form[MAX_PATH] = "";
    SetLastError(0);
    EXPECT_EQ(GetLongPathNameA(c("missing").c_str(), form, MAX_PATH), 0u);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
    SetLastError(0);
    EXPECT_EQ(GetLongPathNameA(c("missing\\below").c_str(), form, MAX_PATH), 0u);
    const DWORD code = GetLastError();
    EXPECT_EQ(code, onWine() ? DWORD{ERROR_FILE_NOT_FOUND} : DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(GetLongPathNameA("", form, MAX_PATH), 0u);
}

TEST_F(TemporaryContract, ATemporaryNameLiesInTheDirectoryOfTmp) {
    kept_.set(c(), "");
    const Text inTmp(_tempnam(d().c_str(), "jwt"));
    EXPECT_EQ(inTmp.string().rfind(c("jwt"), 0), 0u) << inTmp.string();
    EXPECT_FALSE(exists(inTmp.string()));
    kept_.set("", "");
    const Text given(_tempnam(d().c_str(), "jwt")), next(_tempnam(d().c_str(), "jwt"));
    EXPECT_EQ(given.string().rfind(d("jwt"), 0), 0u) << given.string();
    EXPECT_FALSE(exists(given.string()));
    EXPECT_NE(given.string(), next.string());
    const Text bare(_tempnam(d().c_str(), nullptr));
    EXPECT_EQ(bare.string().rfind(d() + "\\", 0), 0u) << bare.string();
}

// Known difference: where the directory that counts is missing, Wine has no name, and the runtime of
// Windows goes on with the next one.
TEST_F(TemporaryContract, ATemporaryNamePassesOverMissingDirectories) {
    for (const char* const tmp : {"Q:\\missing", ""}) {
        kept_.set(tmp, "");
        EXPECT_EQ(Text(_tempnam("Q:\\missing", "jwt")).isNull(), onWine()) << tmp;
    }
    kept_.set("Q:\\missing", "");
    EXPECT_EQ(Text(_tempnam(d().c_str(), "jwt")).isNull(), onWine());
}

// Known difference: Wine takes three characters of the prefix at most and adds an extension.
TEST_F(TemporaryContract, ATemporaryNameIsThePrefixAndANumber) {
    kept_.set(c(), "");
    const Text name(_tempnam(nullptr, "prefix"));
    EXPECT_EQ(name.string().rfind(c(onWine() ? "pre" : "prefix"), 0), 0u) << name.string();
    EXPECT_EQ(name.string().find('.') != std::string::npos, onWine()) << name.string();
}

}  // namespace
