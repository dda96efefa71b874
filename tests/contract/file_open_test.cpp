// Opening and creating files: dispositions, access, sharing and the codes of what cannot be had.
#include "contract_files.h"

namespace {

using OpenFile = ContractFiles;

constexpr const char* wineTruncatesReaders = "Wine truncates without the access to write";
constexpr const char* wineReplacesHidden = "Wine replaces hidden files without the attribute";

TEST_F(OpenFile, DecidesByTheDispositionWhatBecomesOfTheFile) {
    const char *const kept = "content", *const emptied = "", *const refused = nullptr,
                      *const unread = nullptr;
    const struct {
        const char* name;
        DWORD access, disposition;
        const char* result;  // what the file holds afterwards
        DWORD code;
        const char* wine = nullptr;  // a known difference of Wine, in words
        DWORD flags = 0;
    } rows[] = {{"new", writing, CREATE_NEW, emptied, 0},
                {"new", writing, CREATE_ALWAYS, emptied, 0},
                {"new", reading, OPEN_ALWAYS, emptied, 0},
                {"new", reading, OPEN_EXISTING, refused, noFile},
                {"new", writing, TRUNCATE_EXISTING, refused, noFile},
                {"FILE", writing, CREATE_NEW, refused, fileThere},
                {"file", reading, CREATE_ALWAYS, emptied, alreadyThere},
                {"file", reading, OPEN_ALWAYS, kept, alreadyThere},
                {"file", writing, TRUNCATE_EXISTING, emptied, 0},
                {"file", reading, TRUNCATE_EXISTING, refused, badParameter, wineTruncatesReaders},
                {"file", reading, 6, refused, badParameter},
                {"locked", reading, OPEN_EXISTING, kept, 0},
                {"locked", writing, OPEN_EXISTING, refused, denied, wineLetsRootWrite},
                {"locked", reading, CREATE_ALWAYS, refused, denied, wineLetsRootWrite},
                {"hidden", writing, CREATE_ALWAYS, refused, denied, wineReplacesHidden},
                {"hidden", writing, CREATE_ALWAYS, emptied, alreadyThere, nullptr, hidden},
                {"folder", reading, OPEN_EXISTING, refused, denied},
                {"folder", reading, OPEN_EXISTING, unread, 0, nullptr, FILE_FLAG_BACKUP_SEMANTICS},
                {"folder", reading, CREATE_NEW, refused, fileThere},
                {"missing\\file", writing, CREATE_NEW, refused, noPath},
                {"file\\file", reading, OPEN_EXISTING, refused, noPath},
                {"file\\", reading, OPEN_EXISTING, refused, badName},
                {"new\\", writing, CREATE_NEW, refused, badName}};
    for (const auto& [name, attribute] : {std::pair{"locked", readOnly}, {"hidden", hidden}}) {
        write(c(name), kept);
        setAttributes(c(name), attribute);
    }
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        if (row.wine != nullptr && onWine()) continue;
        DeleteFileW(Wide(c("new")));
        write(c("file"), kept);
        {
            const Opened file(c(row.name), row.access, shareAll, row.disposition, row.flags);
            EXPECT_EQ(file.code, row.code);
            EXPECT_EQ(static_cast<bool>(file), row.code == 0 || row.code == alreadyThere);
        }
        EXPECT_TRUE(row.result == refused || read(c(row.name)) == row.result);
    }
    EXPECT_EQ(openCode("C:\\"), denied);
    for (const char character : {'?', '*', '<', '"', '|', '\x01'}) {
        EXPECT_EQ(openCode(c("a") + character), badName) << character;
    }
}

TEST_F(OpenFile, GivesANewFileItsAttributesAndKeepsThoseOfAnOldOne) {
    EXPECT_TRUE(Opened(c("new"), writing, shareNothing, CREATE_NEW, hidden));
    EXPECT_TRUE(Opened(c("new"), reading, shareNothing, OPEN_ALWAYS, FILE_ATTRIBUTE_SYSTEM));
    EXPECT_EQ(attributes(c("new")), hidden | archive);
    {
        const Opened file(c("once"), writing | DELETE, shareAll, CREATE_NEW,
                          FILE_ATTRIBUTE_READONLY | FILE_FLAG_DELETE_ON_CLOSE);
        DWORD moved = 0;
        EXPECT_TRUE(WriteFile(file.handle, "a", 1, &moved, nullptr)) << "the new handle may write";
        EXPECT_EQ(attributes(c("once")), readOnly | archive);
    }
    EXPECT_FALSE(exists(c("once"))) << "does not end with its handle";
}

TEST_F(OpenFile, SharesBetweenTwoHandlesWhatBothAllow) {
    const struct {
        DWORD firstAccess, firstShare, secondAccess, secondShare;
        bool opens;
    } rows[] = {{reading, shareRead, reading, shareRead, true},
                {reading, shareNothing, reading, shareAll, false},
                {reading, shareAll, reading, shareNothing, false},
                {reading, shareRead, writing, shareAll, false},
                {writing, shareRead, reading, shareRead, false},
                {writing, shareRead, reading, FILE_SHARE_WRITE, true},
                {reading, shareRead, DELETE, shareAll, false},
                {reading, shareRead | FILE_SHARE_DELETE, DELETE, shareAll, true},
                {0, shareNothing, reading, shareNothing, true}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        const Opened first(c("file"), row.firstAccess, row.firstShare, OPEN_EXISTING);
        EXPECT_TRUE(first) << "a closed handle still stands against others";
        const Opened second(c("file"), row.secondAccess, row.secondShare, OPEN_EXISTING);
        EXPECT_EQ(second.code, row.opens ? ERROR_SUCCESS : inUse);
    }
    const Opened writer(c("new"), writing, shareNothing, CREATE_NEW);
    for (const DWORD disposition : {OPEN_EXISTING, CREATE_ALWAYS}) {
        const Opened second(c("new"), writing, shareAll, disposition);
        EXPECT_EQ(second.code, inUse) << "of a new file";
    }
}

}  // namespace
