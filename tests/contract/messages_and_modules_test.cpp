// Message texts, strings of modules, modules and their entry points, the version of the system.
#include <gtest/gtest.h>
#include <jw32/frame.h>
#include <windows.h>

#include <cstring>
#include <string>

namespace {

DWORD format(DWORD code, char* buffer, DWORD size) {
    SetLastError(0);
    return FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, code, LANG_USER_DEFAULT, buffer,
                          size, nullptr);
}

TEST(MessageTexts, EndTheirLine) {
    for (const DWORD code : {0, 2, 3, 5, 6, 32, 80, 87, 112, 122, 123, 183}) {
        char text[256] = "";
        const DWORD length = format(code, text, sizeof text);
        ASSERT_GT(length, 2u) << code;
        EXPECT_EQ(length, std::strlen(text)) << code;
        EXPECT_STREQ(text + length - 2, "\r\n") << code;
    }
}

TEST(MessageTexts, NeedRoomForTheTerminatorToo) {
    char text[256] = "", again[256];
    const DWORD length = format(ERROR_FILE_NOT_FOUND, text, sizeof text);
    EXPECT_EQ(format(ERROR_FILE_NOT_FOUND, again, length + 1), length);
    EXPECT_STREQ(again, text);
    for (const DWORD size : {DWORD{0}, DWORD{1}, length}) {
        EXPECT_EQ(format(ERROR_FILE_NOT_FOUND, again, size), 0u) << size;
        EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER}) << size;
    }
}

TEST(MessageTexts, AreMissingForUnknownCodes) {
    for (const DWORD code : {DWORD{99999}, DWORD{0xFFFFFFFF}}) {
        char text[256] = "untouched";
        EXPECT_EQ(format(code, text, sizeof text), 0u) << code;
        EXPECT_EQ(GetLastError(), DWORD{ERROR_MR_MID_NOT_FOUND}) << code;
        EXPECT_STREQ(text, "untouched") << code;
    }
}

TEST(ModuleStrings, OfTheLibraryAreCutToTheBuffer) {
    char text[64] = "";
    EXPECT_EQ(LoadStringA(Jw32GetResourceHandle(), 1, text, sizeof text), 13);
    EXPECT_STREQ(text, "Not Available");
    EXPECT_EQ(LoadStringA(Jw32GetResourceHandle(), 1, text, 4), 3);
    EXPECT_STREQ(text, "Not");
    EXPECT_EQ(LoadStringA(Jw32GetResourceHandle(), 1, text, 1), 0);
    EXPECT_STREQ(text, "");
    EXPECT_EQ(LoadStringA(Jw32GetResourceHandle(), 4711, text, sizeof text), 0);
    EXPECT_STREQ(text, "");
}

TEST(Modules, OfTheSystemAreAlwaysThere) {
    const HMODULE module = GetModuleHandleA("kernel32.dll");
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(GetModuleHandleA("KERNEL32.DLL"), module);
    EXPECT_EQ(GetModuleHandleA("kernel32"), module);
    const HMODULE loaded = LoadLibraryA("Kernel32");
    EXPECT_EQ(loaded, module);
    EXPECT_TRUE(FreeLibrary(loaded));
    EXPECT_EQ(GetModuleHandleA("kernel32.dll"), module) << "no release unloads it";
    EXPECT_TRUE(FreeLibrary(module));
    EXPECT_EQ(GetModuleHandleA("kernel32.dll"), module);
}

TEST(Modules, HaveEntryPointsByTheirExactNames) {
    const HMODULE module = LoadLibraryA("kernel32.dll");
    using GetVersionExAFunction = BOOL(WINAPI*)(LPOSVERSIONINFOA);
    const auto function = reinterpret_cast<GetVersionExAFunction>(
        reinterpret_cast<void*>(GetProcAddress(module, "GetVersionExA")));
    ASSERT_NE(function, nullptr);
    OSVERSIONINFOA version{};
    version.dwOSVersionInfoSize = sizeof version;
    EXPECT_TRUE(function(&version));
    for (const char* const name : {"getversionexa", "Jw32NoSuchEntryPoint", ""}) {
        SetLastError(0);
        EXPECT_EQ(GetProcAddress(module, name), nullptr) << name;
        EXPECT_EQ(GetLastError(), DWORD{ERROR_PROC_NOT_FOUND}) << name;
    }
    FreeLibrary(module);
}

TEST(Modules, CanBeMissing) {
    for (const DWORD flags : {DWORD{0}, DWORD{LOAD_LIBRARY_AS_DATAFILE}}) {
        SetLastError(0);
        EXPECT_EQ(LoadLibraryExA("jw32-no-such-module.dll", nullptr, flags), nullptr);
        const DWORD code = GetLastError();
        EXPECT_TRUE(code == ERROR_MOD_NOT_FOUND || (flags != 0 && code == ERROR_FILE_NOT_FOUND))
            << code;
    }
    EXPECT_EQ(GetModuleHandleA("jw32-no-such-module.dll"), nullptr);
    EXPECT_EQ(GetLastError(), DWORD{ERROR_MOD_NOT_FOUND});
    EXPECT_FALSE(FreeLibrary(nullptr));
}

TEST(Version, ComesInBothRecords) {
    OSVERSIONINFOEXA extended;
    std::memset(&extended, 0x55, sizeof extended);
    extended.dwOSVersionInfoSize = sizeof extended;
    ASSERT_TRUE(GetVersionExA(reinterpret_cast<LPOSVERSIONINFOA>(&extended)));
    EXPECT_EQ(extended.dwPlatformId, DWORD{VER_PLATFORM_WIN32_NT});
    EXPECT_EQ(extended.wProductType, VER_NT_WORKSTATION);
    EXPECT_LT(std::strlen(extended.szCSDVersion), sizeof extended.szCSDVersion);
    OSVERSIONINFOA plain;
    std::memset(&plain, 0x55, sizeof plain);
    plain.dwOSVersionInfoSize = sizeof plain;
    ASSERT_TRUE(GetVersionExA(&plain));
    EXPECT_EQ(plain.dwMajorVersion, extended.dwMajorVersion);
    EXPECT_EQ(plain.dwMinorVersion, extended.dwMinorVersion);
    EXPECT_EQ(plain.dwBuildNumber, extended.dwBuildNumber);
    EXPECT_STREQ(plain.szCSDVersion, extended.szCSDVersion);
}

TEST(Version, NeedsARecordOfAKnownSize) {
    OSVERSIONINFOEXA record{};
    for (const DWORD size : {DWORD{0}, DWORD{147}, DWORD{149}, DWORD{155}, DWORD{157}}) {
        record.dwOSVersionInfoSize = size;
        SetLastError(0);
        EXPECT_FALSE(GetVersionExA(reinterpret_cast<LPOSVERSIONINFOA>(&record))) << size;
        EXPECT_EQ(GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER}) << size;
    }
    EXPECT_EQ(sizeof(OSVERSIONINFOA), 148u);
    EXPECT_EQ(sizeof(OSVERSIONINFOEXA), 156u);
}

DWORD WINAPI setOwnLastError(LPVOID) {
    SetLastError(1);
    return 0;
}

TEST(LastError, BelongsToTheThread) {
    SetLastError(4711);
    const HANDLE thread = CreateThread(nullptr, 0, setOwnLastError, nullptr, 0, nullptr);
    const DWORD code = GetLastError();
    ASSERT_EQ(WaitForSingleObject(thread, INFINITE), DWORD{WAIT_OBJECT_0});
    CloseHandle(thread);
    EXPECT_EQ(code, 4711u);
    EXPECT_EQ(GetLastError(), 4711u);
}

TEST(ErrorMode, GivesTheFormerOne) {
    const UINT former = SetErrorMode(SEM_FAILCRITICALERRORS);
    EXPECT_EQ(SetErrorMode(former), UINT{SEM_FAILCRITICALERRORS});
}

}  // namespace
