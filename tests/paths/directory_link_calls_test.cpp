// Which platform calls a directory link makes, the bytes that it sends, and what its failures leave.
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
    constexpr char digits[] = "0123456789abcdef";
    const auto digit = [&](unsigned place) { return digits[(number >> (4 * place)) & 15]; };
    return {digit(1), digit(0), digit(3), digit(2)};
}

// The text's characters in UTF-16; ASCII only.
std::string utf16(const std::string& text) {
    std::string result;
    for (const char character : text) result += word(static_cast<unsigned char>(character));
    return result;
}

class DirectoryLinkCalls : public ScratchDrives {
  protected:
    DirectoryLinkCalls() { Jw32DirectoryCreate(c("target").c_str()); }
    int make(const std::string& target, bool dryRun = false) const {
        return Jw32MakeDirectoryLink(c("link").c_str(), target.c_str(), dryRun ? 1 : 0);
    }
    // The bytes sent for a target, in hexadecimal, and their count.
    std::pair<std::string, std::string> sent(const std::string& target) const {
        machine::Script script;
        script.answer("DeviceIoControl", TRUE);
        EXPECT_EQ(make(target), 1) << target;
        for (const auto& call : script.calls()) {
            if (call.name == "DeviceIoControl") return {call.arguments[2], call.arguments[3]};
        }
        return {"nothing", "0"};
    }
};

TEST_F(DirectoryLinkCalls, SendTheMountPointToTheByte) {
    struct {
        std::string target, name;
    } const rows[] = {
        {"D:\\abc", "\\??\\D:\\abc"},  // 10 characters
        {"D:\\abc\\", "\\??\\D:\\abc"},
        {"D:\\", "\\??\\D:\\"},
        {"D:\\.\\a\\..\\b", "\\??\\D:\\b"},
        {"D:\\" + std::string(252, 'x'), "\\??\\D:\\" + std::string(252, 'x')},
    };
    for (const auto& row : rows) {
        const auto [bytes, size] = sent(row.target);
        const std::size_t length = 2 * row.name.size();
        EXPECT_EQ(bytes, "030000a0" + word(length + 12) + "0000" + "0000" + word(length) +
                             word(length + 2) + "0000" + utf16(row.name) + "0000" + "0000");
        EXPECT_EQ(size, std::to_string(length + 20));
    }
    EXPECT_EQ(sent("D:\\abc").first.substr(8, 24),
              "20000000000014001600"
              "0000");
    EXPECT_EQ(sent("D:\\abc").second, "40");
}

TEST_F(DirectoryLinkCalls, AreMadeInOrder) {
    machine::Script script;
    EXPECT_EQ(make("D:\\abc"), 1);
    std::vector<std::string> texts;
    for (const auto& call : script.calls()) {
        const bool isNoise = call.name == "MultiByteToWideChar" || call.name == "lstrlenA" ||
                             call.name == "DeviceIoControl";
        if (!isNoise) texts.push_back(call.text());
    }
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
                    "CloseHandle(pointer)"));
    EXPECT_EQ(script.count("DeviceIoControl"), 1u);
    for (const auto& call : script.calls()) {
        if (call.name != "DeviceIoControl") continue;
        EXPECT_EQ(call.arguments[1], std::to_string(0x900A4));
        EXPECT_THAT(std::vector(call.arguments.begin() + 4, call.arguments.end()),
                    ElementsAre("null", "0", "pointer", "null"));
    }
}

TEST_F(DirectoryLinkCalls, OfADryRunSendNothingAndCloseBeforeTheyRemove) {
    machine::Script script;
    EXPECT_EQ(make("D:\\abc", true), 1);
    auto names = script.names();
    EXPECT_EQ(script.count("DeviceIoControl"), 0u);
    ASSERT_GE(names.size(), 2u);
    EXPECT_THAT(std::vector(names.end() - 2, names.end()),
                ElementsAre("CloseHandle", "RemoveDirectoryW"));
}

TEST_F(DirectoryLinkCalls, OnAUncPathAskForTheRootOfTheCurrentDrive) {
    machine::Script script;
    EXPECT_EQ(Jw32MakeDirectoryLink("\\\\server\\share\\link", "D:\\abc", 0), 0);
    EXPECT_EQ(script.calls()[1].name, "GetVolumeInformationW");
    EXPECT_EQ(script.calls()[1].arguments[0], "\"\\\"");
}

TEST_F(DirectoryLinkCalls, StopOnADriveWithoutReparsePoints) {
    auto machine = machine::current();
    for (auto& drive : machine.drives) drive.fileSystemFlags &= ~0x80U;
    const machine::Installed installed(machine);
    machine::Script script;
    EXPECT_EQ(make(c("target")), 0);
    EXPECT_EQ(script.count("LoadLibraryA"), 0u);
    EXPECT_FALSE(exists(c("link")));
}

TEST_F(DirectoryLinkCalls, StopWithoutTheCallForFullPaths) {
    machine::Script script;
    script.missing("kernel32.dll", "GetFullPathNameW");
    EXPECT_EQ(make(c("target")), 0);
    EXPECT_EQ(script.names().back(), "FreeLibrary");
}

TEST_F(DirectoryLinkCalls, StopBeforeAnythingIsMadeWhereAPathDoesNotFit) {
    const auto isRefused = [](const std::string& link, const std::string& target, auto arrange) {
        machine::Script script;
        arrange(script);
        EXPECT_EQ(Jw32MakeDirectoryLink(link.c_str(), target.c_str(), 0), 0);
        EXPECT_EQ(script.count("CreateDirectoryW"), 0u);
    };
    const auto nothing = [](auto&) {};
    isRefused(c("link"), "D:\\" + std::string(253, 'x'), nothing);
    isRefused(c("link"), "D:\\" + std::string(300, 'x'), nothing);
    isRefused(std::string(259, 'x') + "\\link", c("target"), nothing);
    isRefused(c("link"), c("target"), [](auto& s) { s.answer("GetFullPathNameW", 260, 1); });
    isRefused(c("link"), c("target"), [](auto& s) { s.answer("GetFullPathNameW", 300, 2); });
}

// Every call that can fail does so once; what each leaves behind follows from its place.
TEST_F(DirectoryLinkCalls, ThatFailLeaveWhatTheyShould) {
    struct {
        const char* call;
        unsigned n;
        bool linkIsLeft;
    } const rows[] = {{"GetVolumeInformationW", 1, false}, {"LoadLibraryA", 1, false},
                      {"GetProcAddress", 1, false},        {"GetFullPathNameW", 1, false},
                      {"GetFullPathNameW", 2, false},      {"CreateDirectoryW", 1, false},
                      {"GetFileAttributesW", 1, true},     {"CreateFileW", 1, true},
                      {"DeviceIoControl", 1, false}};
    std::size_t fallible = 0;
    {
        machine::Script script;
        EXPECT_EQ(make(c("target")), 1);
        for (const auto& call : script.calls()) {
            const bool isJudgedElsewhere = call.name == "MultiByteToWideChar" ||
                                           call.name == "FreeLibrary" || call.name == "CloseHandle";
            if (call.fallible && !isJudgedElsewhere) ++fallible;
        }
    }
    EXPECT_EQ(fallible, std::size(rows)) << "a call is not judged";
    removeTree(c("link"));
    for (const auto& row : rows) {
        SCOPED_TRACE(testing::Message() << row.call << " " << row.n);
        const auto before = machine::inUse();
        {
            machine::Script script;
            script.fail(row.call, ERROR_GEN_FAILURE, row.n);
            EXPECT_EQ(make(c("target")), 0);
        }
        EXPECT_EQ(machine::inUse(), before) << "leaks";
        const DWORD left =
            row.linkIsLeft ? DWORD{FILE_ATTRIBUTE_DIRECTORY} : INVALID_FILE_ATTRIBUTES;
        EXPECT_EQ(attributes(c("link")), left);
        removeTree(c("link"));
    }
}

TEST_F(DirectoryLinkCalls, ThatFailKeepADirectoryThatStoodBefore) {
    Jw32DirectoryCreate(c("link").c_str());
    {
        machine::Script script;
        script.fail("DeviceIoControl", ERROR_GEN_FAILURE);
        EXPECT_EQ(make(c("target")), 0);
        EXPECT_EQ(script.count("RemoveDirectoryW"), 0u);
    }
    EXPECT_EQ(attributes(c("link")), DWORD{FILE_ATTRIBUTE_DIRECTORY});
}

TEST_F(DirectoryLinkCalls, OfNamesThatCannotBeConvertedLetTheExceptionPass) {
    for (const unsigned n : {1u, 2u, 3u}) {
        const auto before = machine::inUse();
        {
            machine::Script script;
            script.fail("MultiByteToWideChar", ERROR_NO_UNICODE_TRANSLATION, n);
            EXPECT_THROW(make(c("target")), CAtlException);
        }
        EXPECT_EQ(machine::inUse(), before) << "leaks";
        EXPECT_FALSE(exists(c("link")));
    }
}

TEST_F(DirectoryLinkCalls, PutASymbolicLinkOntoTheHost) {
    const auto host = [](const std::string& path) {
        const auto& folder = machine::current().drives.front().folder;
        auto rest = path.substr(2);
        for (char& character : rest) character = character == '\\' ? '/' : character;
        return folder + rest;
    };
    ASSERT_EQ(make("c:" + c("TARGET").substr(2)), 1);
    EXPECT_EQ(std::filesystem::read_symlink(host(c("link"))), host(c("target")));
}

}  // namespace
