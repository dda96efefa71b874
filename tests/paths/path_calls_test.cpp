// Which platform calls the questions about paths make, and what drives of other kinds answer.
#include <atlexcept.h>
#include <gtest/gtest.h>
#include <jw32/paths.h>
#include <windows.h>

#include "paths/calls.h"

namespace {

TEST(Device, IsAskedUnderAQuietErrorMode) {
    const UINT former = SetErrorMode(4);
    machine::Script script;
    script.answer("GetVolumeInformationW", 77);
    EXPECT_EQ(Jw32DeviceIsReady("A:\\"), 77);
    EXPECT_EQ(callsOf(script), R"(
SetErrorMode(1)
GetVolumeInformationW("A:\", pointer, 260, null, pointer, pointer, pointer, 260)
SetErrorMode(4))");
    script.fail("MultiByteToWideChar", ERROR_NO_UNICODE_TRANSLATION);
    EXPECT_THROW(Jw32DeviceIsReady("A:\\"), CAtlException);
    EXPECT_EQ(SetErrorMode(former), 4u) << "it is not set again";
}

TEST(Path, OnADriveOfEachKindIsJudgedByIt) {
    for (UINT kind = DRIVE_UNKNOWN; kind <= DRIVE_RAMDISK; ++kind) {
        machine::Script script;
        script.answer("GetDriveTypeA", kind);
        const bool isRemovable = kind == DRIVE_REMOVABLE;
        for (const bool accepted : {false, true}) {
            const int valid = kind > DRIVE_NO_ROOT_DIR && (accepted || !isRemovable) ? 1 : 0;
            int removable = 7;
            EXPECT_EQ(Jw32PathIsValid("A:\\a", accepted, &removable), valid) << kind;
            EXPECT_EQ(removable, isRemovable ? 1 : 0) << kind;
            EXPECT_EQ(Jw32PathIsValid("A:\\a", accepted, nullptr), valid) << kind;
        }
    }
}

TEST(Path, IsAskedAboutOnlyAsFarAsNeeded) {
    machine::Script script;
    EXPECT_EQ(Jw32PathIsValid("\\\\server\\share", 0, nullptr), 1);
    EXPECT_EQ(Jw32PathIsValid("C:\\a\\..\\b", 0, nullptr), 1);
    EXPECT_EQ(Jw32PathIsEqual("C:\\a", "D:\\a"), 0);
    script.fail("PathCanonicalizeA", ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Jw32PathIsValid("C:\\c", 0, nullptr), 0) << "without a canonical form";
    EXPECT_EQ(callsOf(script), R"(
PathCanonicalizeA("\\server\share")
PathIsUNCW("\\server\share")
PathCanonicalizeA("\\server\share")
PathCanonicalizeA("C:\a\..\b")
PathIsUNCW("C:\b")
PathStripToRootA("C:\b")
GetDriveTypeA("C:\")
PathCanonicalizeA("C:\a\..\b")
PathAddBackslashA("C:\a")
PathAddBackslashA("D:\a")
PathIsSameRootW("C:\a\", "D:\a\")
PathCanonicalizeA("C:\c"))");
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
