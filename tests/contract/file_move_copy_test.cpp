// Moving, copying and deleting.
#include <cstring>

#include "contract_files.h"

namespace {

class WholeFiles : public ContractFiles {
  protected:
    void SetUp() override {
        makeFolder("folder");
        write(c("from"), "content");
        write(c("taken"), "old");
    }
    DWORD move(const std::string& from, const std::string& to) const {
        return codeOf([&] { return MoveFileW(Wide(c(from)), Wide(c(to))); });
    }
    DWORD copy(const std::string& from, const std::string& to, BOOL failIfExists = FALSE) const {
        return codeOf([&] { return CopyFileW(Wide(c(from)), Wide(c(to)), failIfExists); });
    }
    DWORD remove(const std::string& name) const {
        return codeOf([&] { return DeleteFileW(Wide(c(name))); });
    }
    bool inFolder(const char* name) const {
        WIN32_FIND_DATAW record;
        const HANDLE search = FindFirstFileW(Wide(c(name)), &record);
        if (search != INVALID_HANDLE_VALUE) FindClose(search);
        char found[260] = "";
        WideCharToMultiByte(CP_ACP, 0, record.cFileName, -1, found, 260, nullptr, nullptr);
        return std::strcmp(found, name) == 0;
    }
};

TEST_F(WholeFiles, MoveToANewName) {
    EXPECT_EQ(move("from", "folder\\to"), 0u);
    EXPECT_FALSE(exists(c("from")));
    EXPECT_EQ(read(c("folder\\to")), "content");
    EXPECT_EQ(move("folder", "renamed"), 0u) << "a directory goes with what it holds";
    EXPECT_EQ(read(c("renamed\\to")), "content");
    EXPECT_EQ(move("taken", "TAKEN"), 0u) << "a change of case only";
    // Known difference: Wine does nothing then.
    EXPECT_TRUE(onWine() || inFolder("TAKEN"));
}

TEST_F(WholeFiles, MoveBetweenDrives) {
    EXPECT_TRUE(MoveFileW(Wide(c("from")), Wide(d("to"))));
    EXPECT_FALSE(exists(c("from")));
    EXPECT_EQ(read(d("to")), "content");
    EXPECT_EQ(codeOf([&] { return MoveFileW(Wide(c("taken")), Wide(d("to"))); }),
              DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(read(d("to")), "content");
}

TEST_F(WholeFiles, AreNotMovedOverOthers) {
    EXPECT_EQ(move("from", "taken"), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(move("from", "Taken"), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(move("from", "folder"), DWORD{ERROR_ALREADY_EXISTS});
    EXPECT_EQ(read(c("from")), "content");
    EXPECT_EQ(read(c("taken")), "old");
}

TEST_F(WholeFiles, AreNotMovedFromOrToNowhere) {
    EXPECT_EQ(move("missing", "to"), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(move("missing\\from", "to"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(move("from", "missing\\to"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(move("from", "a?b"), DWORD{ERROR_INVALID_NAME});
    EXPECT_EQ(read(c("from")), "content");
}

TEST_F(WholeFiles, StayWhereTheyAreWhileAnotherHasThemOpen) {
    const Opened file(Wide(c("from")), GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
    EXPECT_EQ(move("from", "to"), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(remove("from"), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(copy("taken", "from"), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(copy("from", "to"), 0u) << "a reader shares reading";
    EXPECT_EQ(read(c("from")), "content");
}

TEST_F(WholeFiles, CanBeMovedAndDeletedByThoseWhoShareIt) {
    const Opened file(Wide(c("from")), GENERIC_READ, shareAll, OPEN_EXISTING);
    EXPECT_EQ(move("from", "to"), 0u);
    EXPECT_EQ(remove("to"), 0u);
    char target[8] = "";
    DWORD moved = 0;
    EXPECT_TRUE(ReadFile(file.handle, target, sizeof target, &moved, nullptr));
    EXPECT_EQ(moved, 7u);
}

TEST_F(WholeFiles, AreNotCopiedWhileAWriterSharesNothing) {
    const Opened file(Wide(c("from")), GENERIC_WRITE, shareNothing, OPEN_EXISTING);
    EXPECT_EQ(copy("from", "to"), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_FALSE(exists(c("to")));
}

TEST_F(WholeFiles, ReplaceOthersWhenCopied) {
    write(c("taken"), "something longer than the content");
    EXPECT_EQ(copy("from", "taken", TRUE), DWORD{ERROR_FILE_EXISTS});
    EXPECT_EQ(copy("from", "TAKEN"), 0u);
    EXPECT_EQ(read(c("taken")), "content");
    EXPECT_EQ(read(c("from")), "content");
}

TEST_F(WholeFiles, KeepAttributesAndTimesWhenCopied) {
    constexpr DWORD kept = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE;
    ASSERT_TRUE(SetFileAttributesW(Wide(c("from")), kept));
    Sleep(20);
    EXPECT_EQ(copy("from", "to"), 0u);
    EXPECT_EQ(attributes(c("to")), kept);
    WIN32_FIND_DATAW source, target;
    FindClose(FindFirstFileW(Wide(c("from")), &source));
    FindClose(FindFirstFileW(Wide(c("to")), &target));
    EXPECT_EQ(std::memcmp(&source.ftLastWriteTime, &target.ftLastWriteTime, sizeof(FILETIME)), 0);
}

TEST_F(WholeFiles, AreNotCopiedOverReadOnlyOnes) {
    if (onWine()) GTEST_SKIP() << "known difference: " << wineLetsRootWrite;
    ASSERT_TRUE(SetFileAttributesW(Wide(c("taken")), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(copy("from", "taken"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(read(c("taken")), "old");
}

TEST_F(WholeFiles, AreNotCopiedFromOrToNowhere) {
    EXPECT_EQ(copy("missing", "to"), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(copy("missing\\from", "to"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(copy("from", "missing\\to"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(copy("folder", "to"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(copy("from", "folder"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(copy("from", "a<b"), DWORD{ERROR_INVALID_NAME});
    EXPECT_EQ(copy("from", "from"), DWORD{ERROR_SHARING_VIOLATION});
    EXPECT_EQ(read(c("from")), "content");
}

TEST_F(WholeFiles, AreDeletedUnlessReadOnlyOrDirectories) {
    EXPECT_EQ(remove("FROM"), 0u);
    EXPECT_FALSE(exists(c("from")));
    EXPECT_EQ(remove("from"), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(remove("missing\\from"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(remove("folder"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_EQ(remove("t*"), DWORD{ERROR_INVALID_NAME});
    ASSERT_TRUE(SetFileAttributesW(Wide(c("taken")), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(remove("taken"), DWORD{ERROR_ACCESS_DENIED});
    EXPECT_TRUE(exists(c("taken")));
}

}  // namespace
