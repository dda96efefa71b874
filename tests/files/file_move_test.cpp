// Moving of files, in both builds.
#include <gtest/gtest.h>
#include <jw32/files.h>

#include "support/scratch_drives.h"
#include "support/triple.h"

namespace {

class FileMove : public ScratchDrives {
  protected:
    FileMove() { write(from, "moved"); }

    const std::string from = c("from");
};

TEST_F(FileMove, SparesTheTargetOnOneDriveAndReplacesItOnAnother) {
    const auto renamed = "c" + c("new").substr(1);
    for (const auto& name : {c("to"), d("to")}) write(name, "stays");
    EXPECT_EQ(reported(Jw32FileMove, from, c("to")), Report(0, ERROR_ALREADY_EXISTS));
    EXPECT_EQ(read(c("to")), "stays");
    EXPECT_EQ(reported(Jw32FileMove, from, renamed), Report(1));
    EXPECT_FALSE(exists(from));
    EXPECT_EQ(reported(Jw32FileMove, renamed, d("to")), Report(1));
    EXPECT_FALSE(exists(renamed));
    EXPECT_EQ(read(d("to")), "moved");
}

TEST_F(FileMove, LeavesBothFilesWhenTheSourceIsReadOnly) {
    SetFileAttributesA(from.c_str(), FILE_ATTRIBUTE_READONLY);
    EXPECT_EQ(reported(Jw32FileMove, from, d("to")), Report(0, ERROR_ACCESS_DENIED));
    for (const auto& name : {from, d("to")}) {
        EXPECT_EQ(read(name), "moved");
        EXPECT_TRUE(attributes(name) & FILE_ATTRIBUTE_READONLY) << name;
    }
}

TEST_F(FileMove, RefusesWhatIsMissingAndDirectoriesAndEmptyNames) {
    Jw32DirectoryCreate(c("folder").c_str());
    EXPECT_EQ(reported(Jw32FileMove, c("missing"), c("to")), Report(0, ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(reported(Jw32FileMove, from, d("missing\\to")), Report(0, ERROR_PATH_NOT_FOUND));
    EXPECT_EQ(reported(Jw32FileMove, c("folder"), c("to")), Report(0)) << "a directory";
    EXPECT_EQ(reported(Jw32FileMove, "", c("to")), Report(0));
    EXPECT_EQ(reported(Jw32FileMove, from, ""), Report(0));
    EXPECT_EQ(reported(Jw32FileMove, nullptr, from), Report(0));
    EXPECT_EQ(reported(Jw32FileMove, from, nullptr), Report(0));
    EXPECT_EQ(read(from), "moved");
}

}  // namespace
