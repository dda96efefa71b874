// Which platform calls the operations on paths, folders and temporary names make, and what comes
// of the failures of these calls.
#include <atlexcept.h>
#include <gmock/gmock.h>
#include <jw32/file_names.h>
#include <jw32/folders.h>
#include <jw32/free_space.h>
#include <jw32/paths.h>
#include <jw32/temporary_files.h>
#include <shlobj.h>

#include <filesystem>

#include "core/machine.h"
#include "support/calls.h"
#include "support/failure_sweep.h"
#include "support/scratch_drives.h"
#include "support/temporary_variables.h"

namespace {

using machine::Script;
using testing::EndsWith;
using testing::StartsWith;

TEST(Device, IsAskedUnderAQuietErrorMode) {
    const UINT former = SetErrorMode(4);
    Script script;
    script.answer<&GetVolumeInformationW>(77);
    EXPECT_EQ(Jw32DeviceIsReady("A:\\"), 77);
    EXPECT_EQ(callsOf(script),
              R"(SetErrorMode(1) GetVolumeInformationW("A:\", pointer, 260, null, )"
              R"(pointer, pointer, pointer, 260) SetErrorMode(4) )");
    script.fail("MultiByteToWideChar", ERROR_NO_UNICODE_TRANSLATION);
    EXPECT_THROW(Jw32DeviceIsReady("A:\\"), CAtlException);
    EXPECT_EQ(SetErrorMode(former), 4u) << "it is not set again";
}

TEST(Path, IsJudgedByItsDriveAndAskedAboutOnlyAsFarAsNeeded) {
    for (UINT kind = DRIVE_UNKNOWN; kind <= DRIVE_RAMDISK; ++kind) {
        Script script;
        script.answer<&GetDriveTypeA>(kind);
        const int isRemovable = kind == DRIVE_REMOVABLE, isDrive = kind > DRIVE_NO_ROOT_DIR;
        for (const int accepted : {0, 1}) {
            const int valid = isDrive && (accepted || !isRemovable);
            int removable = 7;
            EXPECT_EQ(Jw32PathIsValid("A:\\a", accepted, &removable), valid) << kind;
            EXPECT_EQ(removable, isRemovable) << kind;
            EXPECT_EQ(Jw32PathIsValid("A:\\a", accepted, nullptr), valid) << kind;
            EXPECT_EQ(Jw32PathIsValid("  ", accepted, nullptr), 0) << kind;
        }
    }
    Script script;
    script.fail("PathCanonicalizeA", ERROR_INVALID_PARAMETER, 4);  // and nothing follows from it
    EXPECT_EQ(Jw32PathIsValid("\\\\s\\share", 0, nullptr), 1);
    EXPECT_EQ(Jw32PathIsValid("C:\\a\\..\\b", 0, nullptr), 1);
    EXPECT_EQ(Jw32PathIsEqual("C:\\a", "D:\\a"), 0);
    script.fail("PathCanonicalizeA", ERROR_INVALID_PARAMETER);
    EXPECT_EQ(Jw32PathIsValid("C:\\c", 0, nullptr), 0) << "without a canonical form";
    EXPECT_EQ(
        callsOf(script),
        R"(PathCanonicalizeA(pointer, "\\s\share") PathIsUNCW("\\s\share") )"
        R"(PathCanonicalizeA(pointer, "\\s\share") PathCanonicalizeA(pointer, "C:\a\..\b") PathIsUNCW("C:\b") )"
        R"(PathStripToRootA("C:\b") GetDriveTypeA("C:\") PathCanonicalizeA(pointer, "C:\a\..\b") )"
        R"(PathAddBackslashA("C:\a") PathAddBackslashA("D:\a") )"
        R"(PathIsSameRootW("C:\a\", "D:\a\") PathCanonicalizeA(pointer, "C:\c") )");
    script.answer<&GetShortPathNameA>(5);
    EXPECT_EQ(Jw32PathIsEqual("C:\\a\\b", "C:\\a\\c"), 0) << "without a short form";
    EXPECT_EQ(Jw32IsReservedDeviceName("con"), 1);
    EXPECT_EQ(script.texts().back(), R"(CompareStringA(2048, 1, "CON", -1, "con", -1))");
}

TEST(ModulePath, IsThatOfTheBareDriveForAModuleInItsRoot) {
    auto machine = machine::current();
    const auto program = std::filesystem::canonical("/proc/self/exe");
    machine.drives.push_back({.letter = 'M', .folder = program.parent_path().string()});
    const machine::ScopedMachine scoped(machine);
    const Script script;
    char buffer[MAX_PATH] = "";
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, MAX_PATH), 1);
    EXPECT_STREQ(buffer, "M:");
    EXPECT_EQ(callsOf(script), "GetModuleFileNameA(null, pointer, 260) ");
}

TEST(FolderPath, IsAskedOfTheModulesInOrder) {
    // The counts are those of modules loaded, questions, and modules released.
    const auto asks = [](int result, std::vector<unsigned> counts, int missing, auto arrange) {
        char buffer[MAX_PATH] = "text";
        Script script;
        arrange(script);
        if (missing > 0) script.missing("shell32.dll", "SHGetFolderPathA");
        if (missing > 1) script.missing("shfolder.dll", "SHGetFolderPathA");
        EXPECT_EQ(Jw32GetFolderPath(CSIDL_PERSONAL, buffer, MAX_PATH), result);
        const auto asked = script.count("SHGetFolderPathA");
        const std::vector made = {script.count("LoadLibraryA"), asked, script.count("FreeLibrary")};
        EXPECT_EQ(made, counts) << callsOf(script);
        EXPECT_EQ(script.count("CreateDirectoryW") > 0, result == 1) << "to make the folder";
        EXPECT_TRUE(asked > 0 || buffer == std::string("text")) << buffer;
        return callsOf(script);
    };
    const auto calls = asks(1, {2, 2, 2}, 1, [](Script& script) {
        script.answer<&SHGetFolderPathA>(S_FALSE, 1);
        script.fail("CreateDirectoryW", ERROR_ACCESS_DENIED, machine::everyCall);
    });
    const char* const expected =
        R"(LoadLibraryA("Shell32.dll") GetProcAddress(pointer, "SHGetFolderPathA") )"
        R"(FreeLibrary(pointer) LoadLibraryA("SHFolder.dll") )"
        R"(GetProcAddress(pointer, "SHGetFolderPathA") )"
        R"(SHGetFolderPathA(null, 32773, null, 0, pointer) )"
        R"(SHGetFolderPathA(null, 32773, null, 1, pointer) FreeLibrary(pointer) PathAdd)";
    EXPECT_THAT(calls, StartsWith(expected));
    asks(0, {2, 0, 2}, 2, [](Script&) {});
    asks(0, {2, 0, 1}, 1, [](Script& script) { script.fail("LoadLibraryA", 126, 2); });
    asks(0, {1, 0, 0}, 0, [](Script& script) { script.fail("LoadLibraryA", 126); });
    asks(1, {1, 2, 1}, 0, [](Script& script) { script.fail("SHGetFolderPathA", 5); });
    asks(0, {1, 2, 1}, 0, [](Script& script) { script.answer<&SHGetFolderPathA>(S_FALSE); });
    asks(0, {1, 1, 1}, 0, [](Script& script) { script.answer<&SHGetFolderPathA>(2); });
}

std::string temporaryDirectory() {
    char buffer[300] = "former";
    return {buffer, Jw32TempDirectory(buffer, sizeof buffer)};
}

TEST(TemporaryDirectory, OfTheEnvironmentIsGivenInItsLongFormWhereThereIsOne) {
    const TemporaryVariables kept;
    kept.set("", "C:\\a");
    Script script;
    EXPECT_EQ(temporaryDirectory(), "C:\\a");
    EXPECT_EQ(
        callsOf(script),
        R"(_dupenv_s(pointer, pointer, "TMP") _dupenv_s(pointer, pointer, "TEMP") _putenv("TMP=C:\a") )"
        R"(LoadLibraryA("Kernel32.dll") GetProcAddress(pointer, "GetLongPathNameA") )"
        R"(GetLongPathNameA("C:\a", pointer, 520) FreeLibrary(pointer) )");
    script.answer<&GetLongPathNameA>(520);
    EXPECT_EQ(temporaryDirectory(), "C:\\a") << "the long form does not fit";
    script.missing("kernel32.dll", "GetLongPathNameA");
    EXPECT_EQ(temporaryDirectory(), "C:\\a") << "the entry is missing";
    script.fail("LoadLibraryA", ERROR_MOD_NOT_FOUND);
    EXPECT_EQ(temporaryDirectory(), "") << "the module is missing";
}

TEST(TemporaryDirectory, OfItsOwnNeedsASystemDirectoryAndRoom) {
    const TemporaryVariables kept;
    kept.set("", "");
    auto machine = machine::current();
    machine.windowsDirectory = "C:\\" + std::string(243, 'w');
    const machine::ScopedMachine withoutRoom(machine);
    Script script;
    script.answer<&GetSystemDirectoryA>(0, 1);
    script.answer<&GetSystemDirectoryA>(3, 2);  // and leaves the array empty
    for (const int time : {1, 2, 3}) EXPECT_EQ(temporaryDirectory(), "") << time;
    const std::string asked =
        R"(_dupenv_s(pointer, pointer, "TMP") _dupenv_s(pointer, pointer, "TEMP") GetSystemDirectoryA(pointer, 260) )";
    EXPECT_EQ(callsOf(script), asked + asked + asked);
    machine.windowsDirectory.pop_back();
    const machine::ScopedMachine withRoom(machine);
    script.fail("CreateDirectoryW", ERROR_ACCESS_DENIED,
                machine::everyCall);  // it is used even if it is not made
    EXPECT_EQ(temporaryDirectory().size(), 260u);
    const auto own = kept.get("TMP") + "\") ";
    EXPECT_THAT(callsOf(script), EndsWith(") _putenv(\"TMP=" + own + "_putenv(\"TEMP=" + own));
}

TEST(TemporaryName, IsHandedOnWhereThereIsOneThatFits) {
    const std::string folder(260, 'd'), n(256, 'n');
    std::string buffer(8, 'x');
    Script script;
    const auto creates = [&script](const std::string& name) {
        script.answer<&_tempnam>(strdup(name.c_str()), 1);
        return reported(Jw32CreateTempFile, "C:\\a", "p", GENERIC_WRITE, OPEN_ALWAYS,
                        FILE_FLAG_DELETE_ON_CLOSE, FILE_SHARE_READ);
    };
    EXPECT_EQ(creates("Q:\\n" + n), Report(INVALID_HANDLE_VALUE, Triple().code)) << "is too long";
    EXPECT_EQ(creates("Q:\\" + n), Report(INVALID_HANDLE_VALUE, ERROR_PATH_NOT_FOUND));
    EXPECT_THAT(callsOf(script),
                StartsWith(R"(_tempnam("C:\a", "p") _tempnam("C:\a", "p") CreateFileW("Q:\)" + n +
                           R"(", 1073741824, 1, null, 4, 67108864, null) )"));
    script.fail("_tempnam", ERROR_NOT_ENOUGH_MEMORY);
    EXPECT_EQ(Jw32TempFilename(buffer.data(), 8, (folder + "dd").c_str(), nullptr), 0u);
    EXPECT_EQ(buffer, std::string(8, '\0'));
    EXPECT_EQ(script.texts().back(), "_tempnam(\"" + folder + "\", null)");
}

using TemporaryFileCalls = ScratchDrives;

TEST_F(TemporaryFileCalls, ThatFailAreReportedAndLeaveNothingOpen) {
    ULARGE_INTEGER bytes;
    DWORD whole;
    const auto count = [&](auto& t) { return Outcome{!t.of(Jw32FreeDiskSpace, "C:", &bytes)}; };
    const auto round = [&](auto& t) { return Outcome{!t.of(Jw32FreeDiskSpaceMB, "C:", &whole)}; };
    const auto create = [&](auto& t) {
        void* const file = t.of(Jw32CreateTempFile, c(), "p", GENERIC_WRITE, CREATE_NEW, 0, 0);
        return Outcome{file == INVALID_HANDLE_VALUE, std::shared_ptr<void>(file, CloseHandle)};
    };
    Jw32FreeDiskSpace("C:", &bytes);  // looks its call up, and keeps the module
    sweepFailures({"Jw32FreeDiskSpace", [&] { return count; }, {}, {{"_splitpath_s", 0}}});
    sweepFailures({"Jw32FreeDiskSpaceMB",
                   [&] { return round; },
                   {},
                   {{"_splitpath_s", sweeping::formerError}}});
    // Without a name, the platform refuses the empty one.
    sweepFailures(
        {"Jw32CreateTempFile", [&] { return create; }, {}, {{"_tempnam", ERROR_PATH_NOT_FOUND}}});
    FreeLibrary(GetModuleHandleA("kernel32.dll"));
}

}  // namespace
