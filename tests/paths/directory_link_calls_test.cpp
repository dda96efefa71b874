// Which platform calls a directory link makes, the bytes that it sends, and what its failures
// leave.
#include <atlexcept.h>
#include <gmock/gmock.h>
#include <jw32/directory_links.h>

#include <filesystem>

#include "machine/machine.h"
#include "machine/testing.h"
#include "support/scratch_drives.h"

namespace {

using testing::ElementsAre;

// A 16-bit number, little-endian, in hexadecimal.
std::string word(std::size_t number) {
    char text[5];
    std::snprintf(text, sizeof text, "%02zx%02zx", number % 256, number / 256 % 256);
    return text;
}

// The call that sets a mount point of that name; ASCII only.
std::string sending(const std::string& name) {
    const auto length = 2 * name.size();
    std::string characters;
    for (const char character : name) characters += word(static_cast<unsigned char>(character));
    return "DeviceIoControl(pointer, 589988, 030000a0" + word(length + 12) + "00000000" +
           word(length) + word(length + 2) + "0000" + characters + "00000000, " +
           std::to_string(length + 20) + ", null, 0, pointer, null)";
}

class DirectoryLinkCalls : public ScratchDrives {
  protected:
    int make(const std::string& target, int dryRun = 0) const {
        return Jw32MakeDirectoryLink(c("link").c_str(), target.c_str(), dryRun);
    }
};

TEST_F(DirectoryLinkCalls, SendTheMountPointToTheByte) {
    const std::string longest = "D:\\" + std::string(252, 'x'), abc = "D:\\abc",
                      winding = "D:\\.\\a\\..\\b";
    const std::pair<std::string, std::string> rows[] = {
        {abc, abc}, {abc + "\\", abc}, {"D:\\", "D:\\"}, {winding, "D:\\b"}, {longest, longest},
    };
    for (const auto& [target, name] : rows) {
        machine::Script script;
        script.answer("DeviceIoControl", TRUE);
        EXPECT_EQ(make(target), 1) << target;
        EXPECT_THAT(script.texts(), testing::Contains(sending("\\??\\" + name))) << target;
    }
}

TEST_F(DirectoryLinkCalls, AreMadeInOrder) {
    machine::Script script;
    EXPECT_EQ(make("D:\\abc"), 1);
    auto texts = script.texts();
    std::erase_if(texts, [](const auto& text) {
        return text.starts_with("MultiByte") || text.starts_with("lstrlenA");
    });
    const auto link = "\"" + c("link") + "\"";
    EXPECT_THAT(
        texts,
        ElementsAre("GetVolumeInformationW(\"C:\\\", null, 0, null, pointer, pointer, null, 0)",
                    "LoadLibraryA(\"Kernel32.dll\")",
                    "GetProcAddress(pointer, \"GetFullPathNameW\")",
                    "GetFullPathNameW(\"D:\\abc\", 260)", "GetFullPathNameW(" + link + ", 260)",
                    "FreeLibrary(pointer)", "CreateDirectoryW(" + link + ", null)",
                    "GetFileAttributesW(" + link + ")",
                    "CreateFileW(" + link + ", 1073741824, 0, null, 3, 35651584, null)",
                    sending("\\??\\D:\\abc"), "CloseHandle(pointer)"));
    removeTree(c("link"));
    EXPECT_EQ(make("D:\\abc", 1), 1);
    EXPECT_EQ(script.count("DeviceIoControl"), 1u) << "a dry run sends nothing";
    const auto names = script.names();
    EXPECT_THAT(std::vector(names.end() - 2, names.end()),
                ElementsAre("CloseHandle", "RemoveDirectoryW"));
}

TEST_F(DirectoryLinkCalls, StopBeforeAnythingIsMade) {
    const auto link = c("link"), target = d(), tooLong = std::string(259, 'x');
    const auto isRefused = [](const char* last, const std::string& from, const std::string& to,
                              auto arrange) {
        machine::Script script;
        arrange(script);
        EXPECT_EQ(Jw32MakeDirectoryLink(from.c_str(), to.c_str(), 0), 0);
        const auto texts = script.texts();
        EXPECT_EQ(texts.empty() ? "" : texts.back().substr(0, texts.back().find('(')), last);
    };
    const auto usual = [](auto&) {};
    const char *const volume = "GetVolumeInformationW", *const release = "FreeLibrary";
    isRefused(release, link, "D:\\" + tooLong.substr(6), usual);
    isRefused(release, link, "D:\\" + tooLong, usual);
    isRefused(release, link, target, [](auto& s) { s.answer("GetFullPathNameW", 300, 1); });
    isRefused(release, link, target, [](auto& s) { s.answer("GetFullPathNameW", 260, 2); });
    isRefused(release, link, target,
              [](auto& s) { s.missing("kernel32.dll", "GetFullPathNameW"); });
    isRefused(volume, tooLong.substr(1) + "\\link", target, usual);
    isRefused("", tooLong + "\\link", target, usual);
    auto machine = machine::current();
    for (auto& drive : machine.drives) drive.fileSystemFlags &= ~0x80U;
    const machine::Installed installed(machine);
    isRefused(volume, link, target, usual);
    machine::Script script;
    Jw32MakeDirectoryLink("\\\\server\\share\\link", target.c_str(), 0);
    EXPECT_THAT(script.texts().back(), testing::StartsWith("GetVolumeInformationW(\"\\\","));
}

// Every call that can fail does so once; what each leaves behind follows from its place.
TEST_F(DirectoryLinkCalls, ThatFailLeaveWhatTheyShould) {
    std::vector<machine::CallRecord> calls;
    {
        const machine::Script script;
        EXPECT_EQ(make(d()), 1);
        calls = script.calls();
    }
    removeTree(c("link"));
    std::erase_if(calls, [](const auto& call) { return !call.fallible; });
    EXPECT_EQ(calls.size(), 14u) << "a call is missing";
    for (unsigned n = 1; n <= calls.size(); ++n) {
        const auto& name = calls[n - 1].name;
        if (name == "FreeLibrary" || name == "CloseHandle") continue;
        for (const bool stoodBefore : {false, true}) {
            SCOPED_TRACE(testing::Message() << name << ", call " << n << ", stood " << stoodBefore);
            if (stoodBefore) Jw32DirectoryCreate(c("link").c_str());
            const auto before = machine::inUse();
            {
                machine::Script script;
                script.failNth(n, ERROR_GEN_FAILURE);
                if (name == "MultiByteToWideChar") {
                    EXPECT_THROW(make(d()), CAtlException);
                } else {
                    EXPECT_EQ(make(d()), 0);
                }
            }
            EXPECT_EQ(machine::inUse(), before) << "leaks";
            const bool stays = stoodBefore || name == "GetFileAttributesW" || name == "CreateFileW";
            EXPECT_EQ(attributes(c("link")),
                      stays ? DWORD{FILE_ATTRIBUTE_DIRECTORY} : INVALID_FILE_ATTRIBUTES);
            removeTree(c("link"));
        }
    }
}

TEST_F(DirectoryLinkCalls, PutASymbolicLinkOntoTheHost) {
    Jw32DirectoryCreate(c("target").c_str());
    ASSERT_EQ(make("c:" + c("TARGET").substr(2)), 1);
    const auto folder = std::filesystem::current_path() / c().substr(3);
    EXPECT_EQ(std::filesystem::read_symlink(folder / "link"), folder / "target");
}

}  // namespace
