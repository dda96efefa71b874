// Moving of files, in both builds.
#include <gtest/gtest.h>
#include <jw32/files.h>

#include "support/scratch_drives.h"
#include "support/triple.h"

namespace {

class FileMove : public ScratchDrives {
  protected:
    FileMove() { write(from, "moved"); }
    ~FileMove() override { SetFileAttributesA(from.c_str(), FILE_ATTRIBUTE_NORMAL); }

    const std::string from = c("from");
};

TEST_F(FileMove, SparesTheTargetOnOneDrive) {
    write(c("to"), "stays");
    EXPECT_EQ(reported(Jw32FileMove, from, c("to")), Report(0, ERROR_ALREADY_EXISTS));
    EXPECT_EQ(read(from), "moved");
    EXPECT_EQ(read(c("to")), "stays");
}

TEST_F(FileMove, RenamesOnOneDriveAndReplacesTheTargetOnAnother) {
    write(d("to"), "replaced");
    const auto renamed = "c" + c("new").substr(1);
    for (const auto& [source, target] : {std::pair{from, renamed}, {renamed, d("to")}}) {
        EXPECT_EQ(reported(Jw32FileMove, source, target), Report(1));
        EXPECT_FALSE(exists(source));
        EXPECT_EQ(read(target), "moved");
    }
}

TEST_F(FileMove, LeavesBothFilesWhenTheSourceIsReadOnly) {
    SetFileAttributesA(from.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(reported(Jw32FileMove, from, d("to")), Report(0, ERROR_ACCESS_DENIED));
    EXPECT_EQ(read(from), "moved");
    EXPECT_EQ(read(d("to")), "moved");
    SetFileAttributesA(d("to").c_str(), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(FileMove, ReportsWhatIsMissing) {
    EXPECT_EQ(reported(Jw32FileMove, c("missing"), c("to")), Report(0, ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(reported(Jw32FileMove, from, d("missing\\to")), Report(0, ERROR_PATH_NOT_FOUND));
    EXPECT_EQ(read(from), "moved");
}

TEST_F(FileMove, RefusesDirectoriesAndEmptyNamesWithoutACode) {
    const auto folder = c("folder"), to = c("to");
    Jw32DirectoryCreate(folder.c_str());
    const char* const rows[][2] = {{folder.c_str(), to.c_str()},
                                   {"", to.c_str()},
                                   {from.c_str(), ""},
                                   {nullptr, to.c_str()},
                                   {from.c_str(), nullptr}};
    for (const auto& row : rows) EXPECT_EQ(reported(Jw32FileMove, row[0], row[1]), Report(0));
    EXPECT_EQ(reported(Jw32FileMove, folder, d("to")), Report(0)) << "to another drive";
    EXPECT_TRUE(exists(folder));
}

}  // namespace
