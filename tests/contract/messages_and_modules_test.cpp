// Message texts, modules and their entry points, the version of the system.
#include <gtest/gtest.h>
#include <windows.h>

#include <cstring>

#include "support/last_error.h"

namespace {

DWORD format(DWORD code, char* buffer, DWORD size) {
    return FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, code, LANG_USER_DEFAULT, buffer,
                          size, nullptr);
}

TEST(MessageTexts, EndTheirLineAndNeedRoomForTheTerminatorToo) {
    char text[256] = "";
    for (const DWORD code : {0, 2, 3, 5, 6, 32, 80, 87, 112, 122, 123, 183}) {
        const DWORD length = format(code, text, sizeof text);
        ASSERT_GT(length, 2u) << code;
        EXPECT_STREQ(text + length - 2, "\r\n") << code;
        EXPECT_EQ(format(code, text, length + 1), length);
        EXPECT_EQ(codeOf(format(code, text, length)), DWORD{ERROR_INSUFFICIENT_BUFFER});
    }
    std::strcpy(text, "untouched");
    EXPECT_EQ(codeOf(format(99999, text, sizeof text)), DWORD{ERROR_MR_MID_NOT_FOUND});
    EXPECT_STREQ(text, "untouched");
}

TEST(Modules, OfTheSystemAreAlwaysThereAndNoOthers) {
    const HMODULE module = GetModuleHandleA("kernel32.dll");
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(GetModuleHandleA("KERNEL32"), module);
    EXPECT_EQ(LoadLibraryA("Kernel32"), module);
    for (int release = 0; release < 2; ++release) EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(GetModuleHandleA("kernel32.dll"), module) << "no release unloads it";
    EXPECT_NE(GetProcAddress(module, "GetVersionExA"), nullptr);
    EXPECT_EQ(codeOf(GetProcAddress(module, "getversionexa")), DWORD{ERROR_PROC_NOT_FOUND});
    EXPECT_EQ(codeOf(LoadLibraryA("jw32-no-such-module.dll")), DWORD{ERROR_MOD_NOT_FOUND});
    EXPECT_FALSE(FreeLibrary(nullptr));
}

TEST(Modules, OfferTheirOwnEntryPoints) {
    struct {
        const char *module, *entryPoint;
    } const rows[] = {{"kernel32.dll", "GetDiskFreeSpaceExA"},
                      {"Shell32", "SHGetFolderPathA"},
                      {"SHFolder", "SHGetFolderPathA"},
                      {"user32.dll", "LoadStringA"},
                      {"shlwapi.dll", "PathCanonicalizeA"}};
    for (const auto& row : rows) {
        const HMODULE module = LoadLibraryA(row.module);
        ASSERT_NE(module, nullptr) << row.module;
        EXPECT_NE(GetProcAddress(module, row.entryPoint), nullptr) << row.entryPoint;
        EXPECT_EQ(GetProcAddress(module, "CreateFontA"), nullptr) << row.module;
        EXPECT_TRUE(FreeLibrary(module));
    }
}

TEST(Version, FillsTheRecordsOfTheTwoKnownSizes) {
    OSVERSIONINFOEXA record;
    const auto fill = [&record](DWORD size) {
        std::memset(&record, 0x55, sizeof record);
        record.dwOSVersionInfoSize = size;
        return codeOf(GetVersionExA(reinterpret_cast<LPOSVERSIONINFOA>(&record)));
    };
    for (const DWORD size : {156, 148}) {
        EXPECT_EQ(fill(size), 0u);
        EXPECT_EQ(record.dwPlatformId, DWORD{VER_PLATFORM_WIN32_NT});
        EXPECT_EQ(record.wProductType, size == 156 ? VER_NT_WORKSTATION : 0x55);
    }
    EXPECT_EQ(fill(155), DWORD{ERROR_INSUFFICIENT_BUFFER});
}

}  // namespace
