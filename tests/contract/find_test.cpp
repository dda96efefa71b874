// Searches: single names, wildcards, the record and the end.
#include <gmock/gmock.h>

#include <set>
#include <vector>

#include "contract_files.h"

namespace {

using testing::UnorderedElementsAre;
using testing::UnorderedElementsAreArray;

std::string narrow(const wchar_t* text) {
    char result[260] = "";
    WideCharToMultiByte(CP_ACP, 0, text, -1, result, sizeof result, nullptr, nullptr);
    return result;
}

class Find : public ContractFiles {
  protected:
    void SetUp() override {
        makeFolder("sub");
        for (const char* const name :
             {"one.txt", "two.txt", "Three.TXT", "noextension", "a long name.html", "one.txt2"}) {
            write(c(name), "content");
        }
    }
    // All that a pattern finds, in any order; the code behind an empty result.
    std::vector<std::string> found(const std::string& pattern) {
        std::vector<std::string> names;
        WIN32_FIND_DATAW record;
        SetLastError(0);
        const HANDLE search = FindFirstFileW(Wide(c(pattern)), &record);
        code = GetLastError();
        if (search == INVALID_HANDLE_VALUE) return names;
        do names.push_back(narrow(record.cFileName));
        while (FindNextFileW(search, &record));
        code = GetLastError();
        EXPECT_TRUE(FindClose(search));
        return names;
    }
    WIN32_FIND_DATAW recordOf(const std::string& name) const {
        WIN32_FIND_DATAW record{};
        const HANDLE search = FindFirstFileW(Wide(c(name)), &record);
        EXPECT_NE(search, INVALID_HANDLE_VALUE) << name;
        EXPECT_TRUE(FindClose(search));
        return record;
    }

    DWORD code = 0;
};

struct Search {
    const char* pattern;
    std::vector<std::string> names;
};
std::ostream& operator<<(std::ostream& out, const Search& search) {
    return out << search.pattern;
}
class Pattern : public Find, public testing::WithParamInterface<Search> {};

TEST_P(Pattern, FindsWhatFits) {
    EXPECT_THAT(found(GetParam().pattern), UnorderedElementsAreArray(GetParam().names));
    EXPECT_EQ(code, DWORD{ERROR_NO_MORE_FILES});
}

INSTANTIATE_TEST_SUITE_P(
    Of, Pattern,
    testing::Values(Search{"one.txt", {"one.txt"}}, Search{"ONE.Txt", {"one.txt"}},
                    Search{"three.txt", {"Three.TXT"}}, Search{"t*.txt", {"two.txt", "Three.TXT"}},
                    Search{"T??.txt", {"two.txt"}}, Search{"*.htm*", {"a long name.html"}},
                    Search{"s?b", {"sub"}}, Search{"*name*", {"a long name.html"}},
                    Search{"SUB\\*", {".", ".."}}, Search{"no*", {"noextension"}},
                    Search{"no*.*", {"noextension"}}, Search{"one.???", {"one.txt"}},
                    Search{"noextension.", {"noextension"}},
                    Search{"sub\\..\\two.txt", {"two.txt"}},
                    Search{"*",
                           {".", "..", "sub", "one.txt", "two.txt", "Three.TXT", "noextension",
                            "a long name.html", "one.txt2"}},
                    Search{"*.*",
                           {".", "..", "sub", "one.txt", "two.txt", "Three.TXT", "noextension",
                            "a long name.html", "one.txt2"}}));

TEST_F(Find, TakesADotAtTheEndForNoExtension) {
    if (onWine()) GTEST_SKIP() << "known difference: Wine drops the dot and finds every name";
    EXPECT_THAT(found("*."), UnorderedElementsAre(".", "..", "sub", "noextension"));
    EXPECT_THAT(found("n*."), UnorderedElementsAre("noextension"));
}

TEST_F(Find, TellsWhatIsMissing) {
    const std::pair<const char*, DWORD> names[] = {
        {"missing", ERROR_FILE_NOT_FOUND},       {"missing*", ERROR_FILE_NOT_FOUND},
        {"missing\\file", ERROR_PATH_NOT_FOUND}, {"missing\\*", ERROR_PATH_NOT_FOUND},
        {"sub\\file", ERROR_FILE_NOT_FOUND},     {"sub\\", ERROR_FILE_NOT_FOUND},
        {"s*\\file", ERROR_INVALID_NAME},        {"a|b", ERROR_INVALID_NAME}};
    for (const auto& [name, expected] : names) {
        // Known difference: Wine looks for the name that Windows refuses.
        if (std::string(name) == "a|b" && onWine()) continue;
        EXPECT_THAT(found(name), testing::IsEmpty()) << name;
        EXPECT_EQ(code, expected) << name;
    }
}

TEST_F(Find, HasNoDotsInARoot) {
    WIN32_FIND_DATAW record;
    const HANDLE search = FindFirstFileW(L"C:\\*", &record);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    do EXPECT_NE(record.cFileName[0], L'.') << narrow(record.cFileName);
    while (FindNextFileW(search, &record));
    FindClose(search);
}

TEST_F(Find, DescribesFilesAndDirectories) {
    const auto file = recordOf("ONE.TXT"), folder = recordOf("sub");
    EXPECT_EQ(file.dwFileAttributes, DWORD{FILE_ATTRIBUTE_ARCHIVE});
    EXPECT_EQ(file.nFileSizeLow, 7u);
    EXPECT_EQ(file.nFileSizeHigh, 0u);
    EXPECT_EQ(narrow(file.cFileName), "one.txt");
    EXPECT_EQ(folder.dwFileAttributes, DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_EQ(folder.nFileSizeLow, 0u);
    // Between the years 2000 and 2200.
    for (const auto& time : {file.ftCreationTime, file.ftLastAccessTime, file.ftLastWriteTime}) {
        EXPECT_GT(time.dwHighDateTime, 0x01BF53EBu);
        EXPECT_LT(time.dwHighDateTime, 0x02A00000u);
    }
}

TEST_F(Find, TellsAShortNameThatOpensTheFile) {
    EXPECT_EQ(narrow(recordOf("one.txt").cAlternateFileName), "") << "has the form already";
    const auto name = narrow(recordOf("a long name.html").cAlternateFileName);
    EXPECT_THAT(name, testing::EndsWith(".HTM"));
    EXPECT_EQ(name.find(' '), std::string::npos) << name;
    EXPECT_LE(name.size(), 12u) << name;
    EXPECT_EQ(read(c(name)), "content");
    EXPECT_EQ(narrow(recordOf(name).cFileName), "a long name.html");
    EXPECT_THAT(found("*.htm"), UnorderedElementsAre("a long name.html")) << "by the short name";
}

TEST_F(Find, GoesOnInAnsiRecordsToo) {
    std::set<std::string> names;
    WIN32_FIND_DATAW first;
    WIN32_FIND_DATAA next;
    const HANDLE search = FindFirstFileW(Wide(c("*.txt")), &first);
    names.insert(narrow(first.cFileName));
    while (FindNextFileA(search, &next)) {
        names.insert(next.cFileName);
        EXPECT_EQ(next.nFileSizeLow, 7u);
    }
    EXPECT_EQ(GetLastError(), DWORD{ERROR_NO_MORE_FILES});
    FindClose(search);
    EXPECT_THAT(names, testing::IsSupersetOf({"one.txt", "two.txt", "Three.TXT"}));
}

}  // namespace
