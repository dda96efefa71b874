// Opening and creating files: dispositions, access, sharing and the codes of what cannot be had.
#include "contract_files.h"

namespace {

class OpenFile : public ContractFiles {
  protected:
    void SetUp() override {
        makeFolder("folder");
        write(c("file"), "content");
        makeHidden("locked", FILE_ATTRIBUTE_READONLY);
        makeHidden("hidden", FILE_ATTRIBUTE_HIDDEN);
    }
};

constexpr DWORD readWrite = GENERIC_READ | GENERIC_WRITE;

// What a call asks of a name, and the last error behind it.
struct Asked {
    const char* name;
    DWORD access, disposition, flags;
    bool opens;
    DWORD code;
    const char* content = "";    // of the file afterwards, where it opens
    const char* wine = nullptr;  // a known difference of Wine, in words
};
constexpr const char* wineTruncatesReaders = "Wine truncates without the access to write";
constexpr const char* wineReplacesHidden = "Wine replaces hidden files without the attribute";
std::ostream& operator<<(std::ostream& out, const Asked& asked) {
    return out << asked.name << " access " << std::hex << asked.access << std::dec
               << " disposition " << asked.disposition << " flags " << asked.flags;
}

class Disposition : public OpenFile, public testing::WithParamInterface<Asked> {};

TEST_P(Disposition, DecidesWhatBecomesOfTheFile) {
    const auto& asked = GetParam();
    if (asked.wine != nullptr && onWine()) GTEST_SKIP() << "known difference: " << asked.wine;
    {
        const Opened file(Wide(c(asked.name)), asked.access, shareAll, asked.disposition,
                          asked.flags);
        EXPECT_EQ(static_cast<bool>(file), asked.opens);
        EXPECT_EQ(file.code, asked.code);
    }
    if (!asked.opens) return;
    EXPECT_EQ(read(c(asked.name)), asked.content);
}

INSTANTIATE_TEST_SUITE_P(
    Of, Disposition,
    testing::Values(
        Asked{"new", GENERIC_WRITE, CREATE_NEW, 0, true, ERROR_SUCCESS},
        Asked{"new", GENERIC_WRITE, CREATE_ALWAYS, 0, true, ERROR_SUCCESS},
        Asked{"new", GENERIC_READ, OPEN_ALWAYS, 0, true, ERROR_SUCCESS},
        Asked{"new", GENERIC_READ, OPEN_EXISTING, 0, false, ERROR_FILE_NOT_FOUND},
        Asked{"new", GENERIC_WRITE, TRUNCATE_EXISTING, 0, false, ERROR_FILE_NOT_FOUND},
        Asked{"file", GENERIC_WRITE, CREATE_NEW, 0, false, ERROR_FILE_EXISTS},
        Asked{"FILE", GENERIC_WRITE, CREATE_NEW, 0, false, ERROR_FILE_EXISTS},
        Asked{"file", GENERIC_WRITE, CREATE_ALWAYS, 0, true, ERROR_ALREADY_EXISTS},
        Asked{"file", GENERIC_READ, CREATE_ALWAYS, 0, true, ERROR_ALREADY_EXISTS},
        Asked{"file", GENERIC_READ, OPEN_ALWAYS, 0, true, ERROR_ALREADY_EXISTS, "content"},
        Asked{"file", GENERIC_WRITE, TRUNCATE_EXISTING, 0, true, ERROR_SUCCESS},
        Asked{"file", GENERIC_READ, TRUNCATE_EXISTING, 0, false, ERROR_INVALID_PARAMETER, "",
              wineTruncatesReaders},
        Asked{"file", GENERIC_READ, 0, 0, false, ERROR_INVALID_PARAMETER},
        Asked{"file", GENERIC_READ, 6, 0, false, ERROR_INVALID_PARAMETER},
        Asked{"locked", GENERIC_READ, OPEN_EXISTING, 0, true, ERROR_SUCCESS, "content"},
        Asked{"locked", GENERIC_WRITE, OPEN_EXISTING, 0, false, ERROR_ACCESS_DENIED, "",
              wineLetsRootWrite},
        Asked{"locked", readWrite, OPEN_ALWAYS, 0, false, ERROR_ACCESS_DENIED, "",
              wineLetsRootWrite},
        Asked{"locked", GENERIC_READ, CREATE_ALWAYS, 0, false, ERROR_ACCESS_DENIED, "",
              wineLetsRootWrite},
        Asked{"hidden", GENERIC_WRITE, CREATE_ALWAYS, 0, false, ERROR_ACCESS_DENIED, "",
              wineReplacesHidden},
        Asked{"hidden", GENERIC_WRITE, CREATE_ALWAYS, FILE_ATTRIBUTE_HIDDEN, true,
              ERROR_ALREADY_EXISTS},
        Asked{"hidden", GENERIC_WRITE, OPEN_EXISTING, 0, true, ERROR_SUCCESS, "content"},
        Asked{"folder", GENERIC_READ, OPEN_EXISTING, 0, false, ERROR_ACCESS_DENIED},
        Asked{"folder", GENERIC_READ, CREATE_ALWAYS, 0, false, ERROR_ACCESS_DENIED},
        Asked{"folder", GENERIC_READ, CREATE_NEW, 0, false, ERROR_FILE_EXISTS},
        Asked{"folder", GENERIC_READ, OPEN_ALWAYS, 0, false, ERROR_ACCESS_DENIED},
        Asked{"missing\\file", GENERIC_WRITE, CREATE_NEW, 0, false, ERROR_PATH_NOT_FOUND},
        Asked{"missing\\file", GENERIC_READ, OPEN_EXISTING, 0, false, ERROR_PATH_NOT_FOUND},
        Asked{"file\\file", GENERIC_WRITE, CREATE_ALWAYS, 0, false, ERROR_PATH_NOT_FOUND},
        Asked{"file\\file", GENERIC_READ, OPEN_EXISTING, 0, false, ERROR_PATH_NOT_FOUND},
        Asked{"a?b", GENERIC_WRITE, CREATE_ALWAYS, 0, false, ERROR_INVALID_NAME},
        Asked{"a*b", GENERIC_READ, OPEN_EXISTING, 0, false, ERROR_INVALID_NAME},
        Asked{"a<b", GENERIC_WRITE, CREATE_ALWAYS, 0, false, ERROR_INVALID_NAME},
        Asked{"a\"b", GENERIC_WRITE, CREATE_ALWAYS, 0, false, ERROR_INVALID_NAME},
        Asked{"a|b", GENERIC_READ, OPEN_EXISTING, 0, false, ERROR_INVALID_NAME},
        Asked{"a\x01"
              "b",
              GENERIC_WRITE, CREATE_NEW, 0, false, ERROR_INVALID_NAME},
        Asked{"file\\", GENERIC_READ, OPEN_EXISTING, 0, false, ERROR_INVALID_NAME},
        Asked{"new\\", GENERIC_WRITE, CREATE_NEW, 0, false, ERROR_INVALID_NAME}));

TEST_F(OpenFile, RefusesANameThatIsNullOrEmpty) {
    for (const wchar_t* const name : {static_cast<const wchar_t*>(nullptr), L""}) {
        const Opened file(name, GENERIC_READ, shareAll, OPEN_EXISTING);
        EXPECT_FALSE(file);
        EXPECT_EQ(file.code, DWORD{ERROR_PATH_NOT_FOUND});
    }
}

TEST_F(OpenFile, TakesAnsiNamesToo) {
    const HANDLE file =
        CreateFileA(c("FILE").c_str(), GENERIC_READ, shareAll, nullptr, OPEN_EXISTING, 0, nullptr);
    ASSERT_NE(file, INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetFileSize(file, nullptr), 7u);
    CloseHandle(file);
    EXPECT_EQ(CreateFileA(c("missing").c_str(), GENERIC_READ, shareAll, nullptr, OPEN_EXISTING, 0,
                          nullptr),
              INVALID_HANDLE_VALUE);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST_F(OpenFile, OpensADirectoryOnDemandOnly) {
    const Opened folder(Wide(c("folder")), GENERIC_READ, shareAll, OPEN_EXISTING,
                        FILE_FLAG_BACKUP_SEMANTICS);
    EXPECT_TRUE(folder);
    const Opened root(L"C:\\", GENERIC_READ, shareAll, OPEN_EXISTING);
    EXPECT_FALSE(root);
    EXPECT_EQ(root.code, DWORD{ERROR_ACCESS_DENIED});
}

TEST_F(OpenFile, GivesANewFileItsAttributesAndKeepsThoseOfAnOldOne) {
    { const Opened file(Wide(c("new")), GENERIC_WRITE, 0, CREATE_NEW, FILE_ATTRIBUTE_HIDDEN); }
    EXPECT_EQ(attributes(c("new")), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE);
    { const Opened file(Wide(c("new")), GENERIC_READ, 0, OPEN_ALWAYS, FILE_ATTRIBUTE_SYSTEM); }
    EXPECT_EQ(attributes(c("new")), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE);
    {
        const Opened file(Wide(c("once")), GENERIC_WRITE, 0, CREATE_NEW, FILE_ATTRIBUTE_READONLY);
        DWORD moved = 0;
        EXPECT_TRUE(WriteFile(file.handle, "abc", 3, &moved, nullptr))
            << "the new handle may write";
    }
    EXPECT_EQ(attributes(c("once")), FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_ARCHIVE);
}

TEST_F(OpenFile, EndsAFileWithItsHandleWhenAskedTo) {
    {
        const Opened file(Wide(c("passing")), GENERIC_WRITE | DELETE, shareAll, CREATE_NEW,
                          FILE_FLAG_DELETE_ON_CLOSE);
        EXPECT_TRUE(file);
        EXPECT_TRUE(exists(c("passing")));
    }
    EXPECT_FALSE(exists(c("passing")));
}

// A first handle with its access and share, and a second one beside it.
struct Pair {
    DWORD firstAccess, firstShare, secondAccess, secondShare;
    bool second;
};
std::ostream& operator<<(std::ostream& out, const Pair& pair) {
    return out << std::hex << pair.firstAccess << " shares " << pair.firstShare << ", then "
               << pair.secondAccess << " shares " << pair.secondShare;
}

class SharingMode : public OpenFile, public testing::WithParamInterface<Pair> {};

TEST_P(SharingMode, HoldsBetweenTwoHandles) {
    const auto& pair = GetParam();
    {
        const Opened first(Wide(c("file")), pair.firstAccess, pair.firstShare, OPEN_EXISTING);
        ASSERT_TRUE(first);
        const Opened second(Wide(c("file")), pair.secondAccess, pair.secondShare, OPEN_EXISTING);
        EXPECT_EQ(static_cast<bool>(second), pair.second);
        EXPECT_EQ(second.code, pair.second ? ERROR_SUCCESS : DWORD{ERROR_SHARING_VIOLATION});
    }
    const Opened later(Wide(c("file")), readWrite, shareNothing, OPEN_EXISTING);
    EXPECT_TRUE(later) << "a closed handle still stands against others";
}

INSTANTIATE_TEST_SUITE_P(
    Pairs, SharingMode,
    testing::Values(Pair{GENERIC_READ, FILE_SHARE_READ, GENERIC_READ, FILE_SHARE_READ, true},
                    Pair{GENERIC_READ, shareNothing, GENERIC_READ, shareAll, false},
                    Pair{GENERIC_READ, shareAll, GENERIC_READ, shareNothing, false},
                    Pair{GENERIC_READ, FILE_SHARE_READ, GENERIC_WRITE, shareAll, false},
                    Pair{GENERIC_READ, FILE_SHARE_WRITE, GENERIC_WRITE, FILE_SHARE_READ, true},
                    Pair{GENERIC_WRITE, FILE_SHARE_READ, GENERIC_READ, FILE_SHARE_WRITE, true},
                    Pair{GENERIC_WRITE, FILE_SHARE_READ, GENERIC_READ, FILE_SHARE_READ, false},
                    Pair{GENERIC_WRITE, FILE_SHARE_READ, GENERIC_WRITE, shareAll, false},
                    Pair{readWrite, shareAll, readWrite, shareAll, true},
                    Pair{GENERIC_READ, FILE_SHARE_READ, DELETE, shareAll, false},
                    Pair{GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_DELETE, DELETE, shareAll, true},
                    Pair{0, shareNothing, GENERIC_READ, shareNothing, true}));

TEST_F(OpenFile, OfANewNameShareAsAskedFor) {
    const Opened writer(Wide(c("new")), GENERIC_WRITE, shareNothing, CREATE_NEW);
    ASSERT_TRUE(writer);
    const Opened reader(Wide(c("new")), GENERIC_READ, shareAll, OPEN_EXISTING);
    EXPECT_EQ(reader.code, DWORD{ERROR_SHARING_VIOLATION});
    const Opened eraser(Wide(c("new")), GENERIC_WRITE, shareAll, CREATE_ALWAYS);
    EXPECT_EQ(eraser.code, DWORD{ERROR_SHARING_VIOLATION});
}

}  // namespace
