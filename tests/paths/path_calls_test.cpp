// Which platform calls the questions about paths make, and what drives of other kinds answer.
#include <atlexcept.h>
#include <gmock/gmock.h>
#include <jw32/paths.h>
#include <windows.h>

#include "machine/testing.h"

namespace {

TEST(Device, IsAskedUnderAQuietErrorMode) {
    const UINT former = SetErrorMode(4);
    {
        machine::Script script;
        script.answer("GetVolumeInformationW", 77);
        EXPECT_EQ(Jw32DeviceIsReady("A:\\"), 77);
        EXPECT_THAT(
            script.texts(),
            testing::ElementsAre("SetErrorMode(1)", testing::StartsWith("MultiByteToWideChar"),
                                 "GetVolumeInformationW(\"A:\\\", pointer, 260, null, pointer, "
                                 "pointer, pointer, 260)",
                                 "SetErrorMode(4)"));
        script.fail("MultiByteToWideChar", ERROR_NO_UNICODE_TRANSLATION);
        EXPECT_THROW(Jw32DeviceIsReady("A:\\"), CAtlException);
    }
    EXPECT_EQ(SetErrorMode(former), 4u);
}

TEST(Path, OnADriveOfEachKindIsJudgedByIt) {
    const struct {
        UINT kind;
        int valid, validWithRemovable, removable;
    } rows[] = {{DRIVE_UNKNOWN, 0, 0, 0}, {DRIVE_NO_ROOT_DIR, 0, 0, 0}, {DRIVE_REMOVABLE, 0, 1, 1},
                {DRIVE_FIXED, 1, 1, 0},   {DRIVE_REMOTE, 1, 1, 0},      {DRIVE_CDROM, 1, 1, 0},
                {DRIVE_RAMDISK, 1, 1, 0}};
    for (const auto& row : rows) {
        machine::Script script;
        script.answer("GetDriveTypeA", row.kind);
        int removable = 7, removable2 = 7;
        EXPECT_EQ(Jw32PathIsValid("A:\\a\\b", 0, &removable), row.valid) << row.kind;
        EXPECT_EQ(Jw32PathIsValid("A:\\a\\b", 1, &removable2), row.validWithRemovable) << row.kind;
        EXPECT_EQ(Jw32PathIsValid("A:\\a\\b", 1, nullptr), row.validWithRemovable) << row.kind;
        EXPECT_EQ(removable, row.removable) << row.kind;
        EXPECT_EQ(removable2, row.removable) << row.kind;
        EXPECT_EQ(script.texts()[4], "GetDriveTypeA(\"A:\\\")");
    }
}

TEST(Path, IsAskedAboutOnlyAsFarAsNeeded) {
    machine::Script script;
    int removable = 7;
    EXPECT_EQ(Jw32PathIsValid("\\\\server\\share\\a", 0, &removable), 1);
    EXPECT_EQ(removable, 0);
    EXPECT_EQ(Jw32PathIsEqual("C:\\a", "D:\\a"), 0);
    script.fail("PathCanonicalizeA", ERROR_INVALID_PARAMETER, 0);
    EXPECT_EQ(Jw32PathIsValid("C:\\a", 0, nullptr), 0) << "without a canonical form";
    EXPECT_EQ(script.count("GetDriveTypeA") + script.count("GetShortPathNameA"), 0u);
}

TEST(Path, IsComparedByItsTextWhereTheShortFormIsTooLongOrEmpty) {
    for (const std::uintptr_t length : {0u, 5u, 260u}) {
        machine::Script script;
        script.answer("GetShortPathNameA", length);
        EXPECT_EQ(Jw32PathIsEqual("C:\\a\\b", "c:\\A\\B"), 1) << length;
        EXPECT_EQ(Jw32PathIsEqual("C:\\a\\b", "C:\\a\\c"), 0) << length;
    }
}

}  // namespace
