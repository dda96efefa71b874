// Searches: single names, wildcards, the record and the end.
#include <gmock/gmock.h>

#include "contract_files.h"

namespace {

using FoundNames = std::vector<std::string>;

class Find : public ContractFiles {
  protected:
    Find() {
        for (const auto& name : files) write(c(name), "content");
    }
    // All that a pattern finds, in any order; the code behind it.
    FoundNames found(const std::string& pattern) {
        FoundNames names;
        WIN32_FIND_DATAW first;
        const HANDLE search = FindFirstFileW(Wide(pattern), &first);
        code = GetLastError();
        if (search == INVALID_HANDLE_VALUE) return names;
        names.push_back(narrow(first.cFileName));
        while (FindNextFileA(search, &next)) names.push_back(next.cFileName);
        code = GetLastError();
        EXPECT_TRUE(FindClose(search));
        return names;
    }

    const FoundNames files = {"file",        "one.txt",          "two.txt", "Three.TXT",
                              "noextension", "a long name.html", "one.txt2"};
    WIN32_FIND_DATAA next{};
    DWORD code = 0;
};

TEST_F(Find, FindsWhatFits) {
    auto all = files;
    all.insert(all.end(), {".", "..", "folder"});
    const struct {
        const char* pattern;
        FoundNames names;
    } rows[] = {{"ONE.Txt", {"one.txt"}},
                {"t*.txt", {"two.txt", "Three.TXT"}},
                {"T??.txt", {"two.txt"}},
                {"*.htm", {"a long name.html"}},  // by its short name
                {"f?lder", {"folder"}},
                {"FOLDER\\*", {".", ".."}},
                {"no*.*", {"noextension"}},
                {"one.???", {"one.txt"}},
                {"*", all},
                {"*.*", all},
                {"*.", {".", "..", "folder", "file", "noextension"}}};
    for (const auto& row : rows) {
        // Known difference: Wine drops the dot and finds every name.
        if (row.pattern == std::string("*.") && onWine()) continue;
        EXPECT_THAT(found(c(row.pattern)), testing::UnorderedElementsAreArray(row.names))
            << row.pattern;
        EXPECT_EQ(code, DWORD{ERROR_NO_MORE_FILES}) << row.pattern;
    }
    EXPECT_THAT(found("C:\\*"), testing::Not(testing::Contains("."))) << "a root has no dots";
}

TEST_F(Find, TellsWhatIsMissing) {
    const PathCode rows[] = {{"missing", noFile},  {"missing*", noFile},  {"missing\\*", noPath},
                             {"folder\\", noFile}, {"s*\\file", badName}, {"a|b", badName}};
    for (const auto& [name, expected] : rows) {
        // Known difference: Wine looks for the name that Windows refuses.
        if (name == "a|b" && onWine()) continue;
        EXPECT_THAT(found(c(name)), testing::IsEmpty()) << name;
        EXPECT_EQ(code, expected) << name;
    }
}

TEST_F(Find, DescribesFilesAndDirectories) {
    const auto file = record(c("ONE.TXT")), folder = record(c("folder"));
    EXPECT_EQ(file.dwFileAttributes, archive);
    EXPECT_EQ(file.nFileSizeLow, 7u);
    EXPECT_EQ(folder.dwFileAttributes, directory);
    EXPECT_EQ(folder.nFileSizeLow, 0u);
    found(c("t*.txt"));
    EXPECT_EQ(next.nFileSizeLow, 7u) << "of the record in ANSI";
    for (const auto& time : {file.ftCreationTime, file.ftLastAccessTime, file.ftLastWriteTime}) {
        EXPECT_NEAR(time.dwHighDateTime, 0x02000000u, 0x00400000u) << "not in this century";
    }
}

TEST_F(Find, TellsAShortNameThatOpensTheFile) {
    EXPECT_EQ(narrow(record(c("one.txt")).cAlternateFileName), "") << "has the form already";
    EXPECT_NE(narrow(record(c("noextension")).cAlternateFileName), "");
    const auto name = narrow(record(c("a long name.html")).cAlternateFileName);
    EXPECT_THAT(name, testing::MatchesRegex("\\S+\\.HTM"));
    EXPECT_LE(name.size(), 12u) << name;
    EXPECT_EQ(read(c(name)), "content");
    EXPECT_EQ(narrow(record(c(name)).cFileName), "a long name.html");
}

}  // namespace
