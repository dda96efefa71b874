// Moving of files, in both builds.
#include <gmock/gmock.h>
#include <jw32/files.h>

#include "support/scratch_drives.h"
#include "support/triple.h"

namespace {

class FileMove : public ScratchDrives {
  protected:
    FileMove() { write(from, "moved"); }
    ~FileMove() override { SetFileAttributesA(from.c_str(), FILE_ATTRIBUTE_NORMAL); }

    int move(const std::string& source, const std::string& target) {
        return triple.of(Jw32FileMove, source.c_str(), target.c_str());
    }

    const std::string from = c("from");
    Triple triple;
};

TEST_F(FileMove, SparesTheTargetOnOneDrive) {
    write(c("to"), "stays");
    EXPECT_EQ(move(from, c("to")), 0);
    EXPECT_TRUE(triple.tells(ERROR_ALREADY_EXISTS)) << triple;
    EXPECT_EQ(read(from), "moved");
    EXPECT_EQ(read(c("to")), "stays");
}

TEST_F(FileMove, RenamesOnOneDriveAndReplacesTheTargetOnAnother) {
    write(d("to"), "replaced");
    auto to = c("new");
    to[0] = 'c';
    for (const auto& [source, target] : {std::pair{from, to}, {to, d("to")}}) {
        EXPECT_EQ(move(source, target), 1);
        EXPECT_TRUE(triple.isClear()) << triple;
        EXPECT_FALSE(exists(source));
        EXPECT_EQ(read(target), "moved");
    }
}

TEST_F(FileMove, LeavesBothFilesWhenTheSourceIsReadOnly) {
    SetFileAttributesA(from.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(move(from, d("to")), 0);
    EXPECT_TRUE(triple.tells(ERROR_ACCESS_DENIED)) << triple;
    EXPECT_EQ(read(from), "moved");
    EXPECT_EQ(read(d("to")), "moved");
    SetFileAttributesA(d("to").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(FileMove, ReportsWhatIsMissing) {
    EXPECT_EQ(move(c("missing"), c("to")), 0);
    EXPECT_TRUE(triple.tells(ERROR_FILE_NOT_FOUND)) << triple;
    EXPECT_EQ(move(from, d("missing\\to")), 0);
    EXPECT_TRUE(triple.tells(ERROR_PATH_NOT_FOUND)) << triple;
    EXPECT_EQ(read(from), "moved");
}

TEST_F(FileMove, RefusesDirectoriesAndEmptyNamesWithoutACode) {
    Jw32DirectoryCreate(c("folder").c_str());
    for (const auto& [source, target] : {std::pair{c("folder"), c("to")},
                                         {c("folder"), d("to")},
                                         {std::string(), c("to")},
                                         {from, std::string()}}) {
        EXPECT_EQ(move(source, target), 0);
        EXPECT_TRUE(triple.isClear()) << source << triple;
    }
    EXPECT_EQ(Jw32FileMove(nullptr, from.c_str()), 0);
    EXPECT_EQ(Jw32FileMove(from.c_str(), nullptr), 0);
    EXPECT_TRUE(exists(c("folder")));
}

}  // namespace
