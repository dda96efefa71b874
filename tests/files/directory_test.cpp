// Finding and creating directories, in both builds.
#include <gmock/gmock.h>
#include <jw32/directories.h>

#include <cstring>

#include "support/scratch_drives.h"
#include "support/triple.h"

namespace {

class Directory : public ScratchDrives {
  protected:
    int create(const std::string& path) { return triple.of(Jw32DirectoryCreate, path.c_str()); }
    int exist(const std::string& path) { return triple.of(Jw32DirectoryExist, path.c_str()); }

    Triple triple;
};

TEST_F(Directory, IsFoundWithAndWithoutALastBackslash) {
    create(c("A long directory name"));
    for (const char* const name : {"A long directory name", "a LONG directory name\\", "A lo*"}) {
        WIN32_FIND_DATAA record;
        std::memset(&record, 0x55, sizeof record);
        void* const search = triple.of(Jw32DirectoryFind, c(name).c_str(), &record);
        ASSERT_NE(search, INVALID_HANDLE_VALUE) << name;
        EXPECT_TRUE(triple.isClear()) << triple;
        EXPECT_TRUE(FindClose(search));
        EXPECT_TRUE(record.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY);
        EXPECT_NE(record.ftLastWriteTime.dwHighDateTime, 0x55555555u);
        EXPECT_EQ(record.nFileSizeHigh, 0u);
        EXPECT_EQ(record.dwReserved0, 0x55555555u);
        EXPECT_EQ(record.dwReserved1, 0x55555555u);
        EXPECT_STREQ(record.cFileName, "A long directory name");
        EXPECT_LT(std::strlen(record.cAlternateFileName), sizeof record.cAlternateFileName);
    }
}

TEST_F(Directory, DescribesAFileThatIsFoundInItsPlace) {
    write(c("file"), "1234");
    WIN32_FIND_DATAA record{};
    EXPECT_EQ(triple.of(Jw32DirectoryFind, c("file").c_str(), &record), INVALID_HANDLE_VALUE);
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_EQ(record.nFileSizeLow, 4u);
    EXPECT_STREQ(record.cFileName, "file");
}

TEST_F(Directory, IsNotFoundWithoutPathOrRecord) {
    WIN32_FIND_DATAA record;
    for (const auto& [path, target] : {std::pair<const char*, WIN32_FIND_DATAA*>{nullptr, &record},
                                       {"", &record},
                                       {"C:\\", nullptr}}) {
        EXPECT_EQ(triple.of(Jw32DirectoryFind, path, target), INVALID_HANDLE_VALUE);
        EXPECT_TRUE(triple.isClear()) << triple;
    }
}

TEST_F(Directory, Exists) {
    write(c("file"), "");
    EXPECT_EQ(exist(c()), 1);
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_EQ(exist(c("file")), 0);
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_EQ(exist(""), 0);
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_EQ(exist(c("missing")), 0);
    EXPECT_TRUE(triple.tells(ERROR_FILE_NOT_FOUND)) << triple;
}

TEST_F(Directory, IsCreatedWithAllThatIsMissingAboveIt) {
    for (const char* const path : {"one", "one\\two\\three", "one\\two\\three", "four\\five\\"}) {
        EXPECT_EQ(create(c(path)), 1) << path;
        EXPECT_TRUE(triple.isClear()) << triple;
        EXPECT_EQ(exist(c(path)), 1) << path;
    }
    write(c("file"), "");
    EXPECT_EQ(create(c("file")), 1) << "where a file stands";
    EXPECT_TRUE(triple.isClear()) << triple;
}

TEST_F(Directory, IsNotCreatedFromPathsOfOtherKinds) {
    for (const auto& [path, done] : {std::pair{"Q:", 1},
                                     {"Q:\\", 1},
                                     {"C:", 1},
                                     {"", 0},
                                     {"a", 0},
                                     {"\\", 0},
                                     {"nobackslash", 0},
                                     {"C:/a/b", 0}}) {
        EXPECT_EQ(create(path), done) << path;
        EXPECT_TRUE(triple.isClear()) << path << triple;
    }
    EXPECT_EQ(Jw32DirectoryCreate(nullptr, &triple.code), 0);
}

TEST_F(Directory, ReportsTheLastLevelThatCannotBeMade) {
    EXPECT_EQ(create("Q:\\one\\two"), 0);
    EXPECT_TRUE(triple.tells(ERROR_PATH_NOT_FOUND)) << triple;
    EXPECT_EQ(create(c("made\\a?b")), 0);
    EXPECT_TRUE(triple.tells(ERROR_INVALID_NAME)) << triple;
    EXPECT_TRUE(exists(c("made")));
}

TEST_F(Directory, GetsAttributesOnEveryLevelThatIsNew) {
    const DWORD hidden = FILE_ATTRIBUTE_HIDDEN;
    const auto isHidden = [this](const char* path) {
        return (attributes(c(path)) & FILE_ATTRIBUTE_HIDDEN) != 0;
    };
    create(c("old"));
    EXPECT_EQ(Jw32DirectoryCreateAttr(c("old\\new\\newer").c_str(), hidden, hidden), 1);
    EXPECT_FALSE(isHidden("old"));
    EXPECT_TRUE(isHidden("old\\new"));
    EXPECT_TRUE(isHidden("old\\new\\newer"));
    EXPECT_TRUE(attributes(c("old\\new")) & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace
