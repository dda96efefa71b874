// Finding and creating directories, in both builds.
#include <jw32/directories.h>

#include <cstddef>
#include <cstring>

#include "support/scratch_drives.h"
#include "support/triple.h"
#include "support/wide.h"

namespace {

class Directory : public ScratchDrives {
  protected:
    static auto create(const std::string& path) { return reported(Jw32DirectoryCreate, path); }
    static auto exist(const std::string& path) { return reported(Jw32DirectoryExist, path); }
    // Whether a directory is found, what was told, and what the record holds of it.
    static auto find(const char* path, WIN32_FIND_DATAA* target) {
        return reported([&](auto... t) {
            void* const search = Jw32DirectoryFind(path, target, t...);
            return search != INVALID_HANDLE_VALUE && FindClose(search);
        });
    }

    WIN32_FIND_DATAA record{};
};

TEST_F(Directory, IsFoundWithAndWithoutALastBackslash) {
    const auto full = c("A long directory name");
    create(full);
    WIN32_FIND_DATAW wide;
    ASSERT_TRUE(FindClose(FindFirstFileW(Wide(full), &wide)));
    for (const auto& name : {full, c("a LONG directory name\\"), c("A lo*")}) {
        std::memset(&record, 0x55, sizeof record);
        EXPECT_EQ(find(name.c_str(), &record), Report(true)) << name;
        EXPECT_EQ(std::memcmp(&record, &wide, offsetof(WIN32_FIND_DATAA, dwReserved0)), 0) << name;
        EXPECT_EQ(record.dwReserved0 & record.dwReserved1, 0x55555555u);
        EXPECT_STREQ(record.cFileName, "A long directory name");
        EXPECT_EQ(record.cAlternateFileName, narrow(wide.cAlternateFileName));
    }
}

TEST_F(Directory, IsNotFoundWhereAFileStandsOrWithoutPathOrRecord) {
    write(c("file"), "1234");
    EXPECT_EQ(find(c("file").c_str(), &record), Report(false));
    EXPECT_STREQ(record.cFileName, "file");
    EXPECT_EQ(find(nullptr, &record), Report(false));
    EXPECT_EQ(find("", &record), Report(false));
    EXPECT_EQ(find(c().c_str(), nullptr), Report(false));
    EXPECT_EQ(exist(c("file")), Report(0));
    EXPECT_EQ(exist(c("missing")), Report(0, ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(create(c("file")), Report(1)) << "where a file stands";
}

TEST_F(Directory, IsCreatedWithAllThatIsMissingAboveIt) {
    for (const char* const path : {"one", "one\\two\\three", "one\\two\\three", "four\\five\\"}) {
        EXPECT_EQ(create(c(path)), Report(1)) << path;
        EXPECT_EQ(exist(c(path)), Report(1)) << path;
    }
    EXPECT_EQ(create("Q:\\one\\two"), Report(0, ERROR_PATH_NOT_FOUND));
    EXPECT_EQ(create(c("made\\a?b")), Report(0, ERROR_INVALID_NAME));
    EXPECT_EQ(exist(c("made")), Report(1));
}

TEST_F(Directory, IsNotCreatedFromPathsOfOtherKinds) {
    for (const char* const path : {"Q:", "Q:\\", "ab:"}) EXPECT_EQ(create(path), Report(1)) << path;
    for (const auto* path : {"", "\\", "ab", "C:/a"}) EXPECT_EQ(create(path), Report(0)) << path;
    EXPECT_EQ(reported(Jw32DirectoryCreate, nullptr), Report(0));
}

TEST_F(Directory, GetsAttributesOnEveryLevelThatIsNew) {
    constexpr DWORD hidden = FILE_ATTRIBUTE_HIDDEN;
    create(c("old"));
    EXPECT_EQ(reported(Jw32DirectoryCreateAttr, c("old\\new\\newer"), hidden, hidden), Report(1));
    EXPECT_EQ(attributes(c("old")), DWORD{FILE_ATTRIBUTE_DIRECTORY});
    for (const char* const level : {"old\\new", "old\\new\\newer"}) {
        EXPECT_EQ(attributes(c(level)), FILE_ATTRIBUTE_DIRECTORY | hidden) << level;
    }
}

}  // namespace
