// Which platform calls a directory link makes, the bytes that it sends, and what its failures
// leave.
#include <atlexcept.h>
#include <gmock/gmock.h>
#include <jw32/directory_links.h>

#include <filesystem>

#include "core/machine.h"
#include "support/calls.h"
#include "support/scratch_drives.h"

namespace {

using testing::EndsWith;
using testing::StartsWith;

using DirectoryLinkCalls = ScratchDrives;

const std::string place = "C:\\l";

int make(const std::string& target, int dryRun = 0, const std::string& link = place) {
    return Jw32MakeDirectoryLink(link.c_str(), target.c_str(), dryRun);
}

// The tag, the length of the data, and offsets and lengths of the names; then the name of the
// target, in characters of 16 bits.
const std::string sent =
    "DeviceIoControl(pointer, 589988, 030000a02000000000001400160000005c003f003f005c00"
    "44003a005c0061006200630000000000, 40, null, 0, pointer, null) CloseHandle(pointer) ";

TEST_F(DirectoryLinkCalls, AreMadeInOrder) {
    machine::Script script;
    EXPECT_EQ(make("D:\\.\\abc", 0, "C:\\.\\l"), 1);
    EXPECT_EQ(
        callsOf(script),
        R"(GetVolumeInformationW("C:\", null, 0, null, pointer, pointer, null, 0) )"
        R"(LoadLibraryA("Kernel32.dll") GetProcAddress(pointer, "GetFullPathNameW") )"
        R"(GetFullPathNameW("D:\.\abc", 260, pointer, pointer) GetFullPathNameW("C:\.\l", 260, pointer, pointer) )"
        R"(FreeLibrary(pointer) CreateDirectoryW("C:\l", null) GetFileAttributesW("C:\l") )"
        R"(CreateFileW("C:\l", 1073741824, 0, null, 3, 35651584, null) )" +
            sent);
    removeTree(place);
    EXPECT_EQ(make("D:\\abc", 7), 1) << "a dry run, which sends nothing";
    EXPECT_THAT(callsOf(script),
                EndsWith(R"(null) CloseHandle(pointer) RemoveDirectoryW("C:\l") )"));
}

TEST_F(DirectoryLinkCalls, PutASymbolicLinkOntoTheHost) {
    EXPECT_EQ(make("c:\\WINDOWS"), 1);
    const auto root = std::filesystem::current_path();  // that of C:
    EXPECT_EQ(std::filesystem::read_symlink(root / "l"), root / "Windows");
    removeTree(place);
}

TEST_F(DirectoryLinkCalls, NameTheTargetToTheByte) {
    const std::pair<std::string, std::string> rows[] = {
        {"D:\\abc\\", sent},
        {"D:\\", "030000a01a00000000000e00100000005c003f003f005c0044003a005c0000000000, 34, "},
        {"D:\\" + std::string(252, 'x'), "030000a01202000000000602080200005c00"}};
    for (const auto& [target, text] : rows) {
        machine::Script script;
        EXPECT_EQ(make(target), 1) << target;
        EXPECT_THAT(callsOf(script), testing::HasSubstr(text)) << target;
        removeTree(place);
    }
}

TEST_F(DirectoryLinkCalls, ThatFailLeaveWhatTheyShould) {
    for (const std::string call :
         {"GetVolumeInformationW", "LoadLibraryA", "GetProcAddress", "GetFullPathNameW",
          "CreateDirectoryW", "GetFileAttributesW", "CreateFileW", "DeviceIoControl"}) {
        const bool isLate = call == "GetFileAttributesW" || call == "CreateFileW";
        for (const bool stood : {false, true}) {
            if (stood) Jw32DirectoryCreate(place.c_str());
            machine::Script script;
            script.fail(call, ERROR_GEN_FAILURE);
            EXPECT_EQ(make("D:\\abc"), 0) << call;
            EXPECT_EQ(exists(place), stood || isLate) << call;
            removeTree(place);
        }
    }
}

TEST_F(DirectoryLinkCalls, NeedAVolumeThatHasLinksAndPathsThatFit) {
    machine::Script script;
    for (const unsigned n : {253u, 259u}) EXPECT_EQ(make("D:\\" + std::string(n, 'x')), 0) << n;
    script.answer<&GetFullPathNameW>(260, 2);
    EXPECT_EQ(make("D:\\abc"), 0) << "the link does not fit";
    script.fail("MultiByteToWideChar", ERROR_GEN_FAILURE, 2);
    EXPECT_THROW(make("D:\\abc"), CAtlException) << "the target cannot be converted";
    auto machine = machine::current();
    for (auto& drive : machine.drives) drive.fileSystemFlags &= ~0x80U;
    const machine::ScopedMachine scoped(machine);
    EXPECT_EQ(make("D:\\abc") + make(""), 0) << "the volume has no links";
    for (const unsigned length : {258u, 259u}) make("D:\\", 0, std::string(length, 'x') + "\\a");
    EXPECT_EQ(script.count("GetVolumeInformationW"), 6u) << "or the root does not fit";
    make("D:\\", 0, R"(\\server\share\link)");
    EXPECT_THAT(script.texts().back(), StartsWith(R"(GetVolumeInformationW("\",)"));
    EXPECT_EQ(script.count("CreateDirectoryW"), 0u);
}

}  // namespace
