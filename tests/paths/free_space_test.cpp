// Free space of drives, in both builds.
#include <gtest/gtest.h>
#include <jw32/free_space.h>

#include <string>

#include "support/kept_modules.h"
#include "support/triple.h"

namespace {

constexpr ULONGLONG untouched = 4711;

class FreeSpace : public KeepsModules {};

ULARGE_INTEGER number(ULONGLONG value) {
    ULARGE_INTEGER result;
    result.QuadPart = value;
    return result;
}

TEST_F(FreeSpace, IsThatOfTheDriveForAnyPathBelowIt) {
    for (const char* const path : {"C:", "C:\\", "c:\\no\\such\\dir", "C:relative", "C:*?"}) {
        SCOPED_TRACE(path);
        Triple triple;
        auto bytes = number(0), plain = number(0);
        DWORD megabytes = 0, plainMegabytes = 0;
        EXPECT_EQ(Jw32FreeDiskSpace(path, &bytes, &triple.code, triple.text, triple.size), 1);
        EXPECT_TRUE(triple.isClear()) << triple;
        EXPECT_EQ(Jw32FreeDiskSpaceC(path, &plain), 1);
        EXPECT_EQ(Jw32FreeDiskSpaceMB(path, &megabytes), 1);
        EXPECT_EQ(Jw32FreeDiskSpaceMBC(path, &plainMegabytes), 1);
        EXPECT_GT(bytes.QuadPart, 1u << 20) << "the drive seems to be full";
        // Others write to the host's disk at the same time.
        const auto whole = static_cast<double>(bytes.QuadPart);
        EXPECT_NEAR(static_cast<double>(plain.QuadPart), whole, whole / 4);
        EXPECT_NEAR(1048576.0 * megabytes, whole, whole / 4);
        EXPECT_NEAR(1048576.0 * plainMegabytes, whole, whole / 4);
    }
}

TEST_F(FreeSpace, NeedsADriveLetter) {
    for (const char* const path :
         {"", "relative", "\\rooted", "\\\\server\\share\\a", static_cast<const char*>(nullptr)}) {
        SCOPED_TRACE(path != nullptr ? path : "null");
        Triple triple, triple2;
        auto bytes = number(untouched);
        DWORD megabytes = 7, plainMegabytes = 7;
        EXPECT_EQ(Jw32FreeDiskSpace(path, &bytes, &triple.code, triple.text, triple.size), 0);
        EXPECT_TRUE(triple.isClear()) << triple;
        EXPECT_EQ(Jw32FreeDiskSpaceC(path, &bytes), 0);
        EXPECT_EQ(bytes.QuadPart, untouched);
        // In megabytes the thread's last error is told, whatever it is about.
        SetLastError(ERROR_NOT_READY);
        EXPECT_EQ(Jw32FreeDiskSpaceMB(path, &megabytes, &triple2.code, triple2.text, triple2.size),
                  0);
        EXPECT_TRUE(triple2.tells(ERROR_NOT_READY)) << triple2;
        EXPECT_EQ(Jw32FreeDiskSpaceMBC(path, &plainMegabytes), 0);
        EXPECT_EQ(megabytes, 0u);
        EXPECT_EQ(plainMegabytes, 0u);
    }
}

TEST_F(FreeSpace, NeedsAPlaceForTheResult) {
    Triple triple, triple2;
    SetLastError(ERROR_NOT_READY);
    EXPECT_EQ(Jw32FreeDiskSpace("C:\\", nullptr, &triple.code, triple.text, triple.size), 0);
    EXPECT_EQ(Jw32FreeDiskSpaceMB("C:\\", nullptr, &triple2.code, triple2.text, triple2.size), 0);
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_TRUE(triple2.isClear()) << triple2;
    EXPECT_EQ(Jw32FreeDiskSpaceC("C:\\", nullptr), 0);
    EXPECT_EQ(Jw32FreeDiskSpaceMBC("C:\\", nullptr), 0);
}

TEST_F(FreeSpace, OfAMissingDriveIsAFailureWithItsReason) {
    Triple triple, triple2;
    auto bytes = number(0);
    DWORD megabytes = 7, plainMegabytes = 7;
    EXPECT_EQ(Jw32FreeDiskSpace("Q:\\a", &bytes, &triple.code, triple.text, triple.size), 0);
    EXPECT_TRUE(triple.tells(ERROR_PATH_NOT_FOUND)) << triple;
    EXPECT_EQ(Jw32FreeDiskSpaceMB("Q:\\a", &megabytes, &triple2.code, triple2.text, triple2.size),
              0);
    EXPECT_TRUE(triple2.tells(ERROR_PATH_NOT_FOUND)) << triple2;
    EXPECT_EQ(Jw32FreeDiskSpaceC("Q:\\a", &bytes), 0);
    EXPECT_EQ(Jw32FreeDiskSpaceMBC("Q:\\a", &plainMegabytes), 0);
    EXPECT_EQ(megabytes, 0u);
    EXPECT_EQ(plainMegabytes, 0u);
}

}  // namespace
