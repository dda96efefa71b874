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
        const auto calls = script.calls();
        ASSERT_EQ(calls.size(), 4u);
        EXPECT_EQ(calls[0].text(), "SetErrorMode(1)");
        EXPECT_EQ(calls[1].name, "MultiByteToWideChar");
        EXPECT_EQ(
            calls[2].text(),
            "GetVolumeInformationW(\"A:\\\", pointer, 260, null, pointer, pointer, pointer, 260)");
        EXPECT_EQ(calls[3].text(), "SetErrorMode(4)");
    }
    {
        machine::Script script;
        script.fail("MultiByteToWideChar", ERROR_NO_UNICODE_TRANSLATION);
        EXPECT_THROW(Jw32DeviceIsReady("A:\\"), CAtlException);
    }
    EXPECT_EQ(SetErrorMode(former), 4u);
}

TEST(Path, OnADriveOfEachKindIsJudgedByIt) {
    struct {
        UINT kind;
        int validWithout, validWith, removable;
    } const rows[] = {
        {DRIVE_UNKNOWN, 0, 0, 0}, {DRIVE_NO_ROOT_DIR, 0, 0, 0}, {DRIVE_REMOVABLE, 0, 1, 1},
        {DRIVE_FIXED, 1, 1, 0},   {DRIVE_REMOTE, 1, 1, 0},      {DRIVE_CDROM, 1, 1, 0},
        {DRIVE_RAMDISK, 1, 1, 0},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.kind);
        machine::Script script;
        script.answer("GetDriveTypeA", row.kind);
        int removable = 7;
        EXPECT_EQ(Jw32PathIsValid("A:\\a\\b", 0, &removable), row.validWithout);
        EXPECT_EQ(removable, row.removable);
        EXPECT_EQ(Jw32PathIsValid("A:\\a\\b", 1, &removable), row.validWith);
        EXPECT_EQ(removable, row.removable);
        EXPECT_EQ(Jw32PathIsValid("A:\\a\\b", 1, nullptr), row.validWith);
        EXPECT_EQ(script.calls()[4].text(), "GetDriveTypeA(\"A:\\\")");
    }
}

TEST(Path, OnAServerIsValidWithoutLookingAtTheDrive) {
    machine::Script script;
    int removable = 7;
    EXPECT_EQ(Jw32PathIsValid("\\\\server\\share\\a", 0, &removable), 1);
    EXPECT_EQ(removable, 0);
    EXPECT_EQ(script.count("GetDriveTypeA"), 0u);
}

TEST(Path, WithoutACanonicalFormIsNotValid) {
    machine::Script script;
    script.fail("PathCanonicalizeA", ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Jw32PathIsValid("C:\\a", 0, nullptr), 0);
    EXPECT_EQ(script.calls().size(), 1u);
}

TEST(Path, OnAnotherDriveHasNoShortFormLookedUp) {
    machine::Script script;
    EXPECT_EQ(Jw32PathIsEqual("C:\\a", "D:\\a"), 0);
    EXPECT_EQ(script.count("GetShortPathNameA"), 0u);
}

TEST(Path, IsComparedByItsTextWhereTheShortFormIsTooLongOrEmpty) {
    for (const std::uintptr_t length : {0u, 5u, 260u}) {
        machine::Script script;
        script.answer("GetShortPathNameA", length);
        EXPECT_EQ(Jw32PathIsEqual("C:\\a\\b", "c:\\A\\B"), 1);
        EXPECT_EQ(Jw32PathIsEqual("C:\\a\\b", "C:\\a\\c"), 0);
    }
}

}  // namespace
