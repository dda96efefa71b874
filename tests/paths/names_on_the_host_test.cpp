// Names and folders as the host has them, which the interface would not make.
#include <gtest/gtest.h>
#include <jw32/files.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <vector>

#include "core/machine.h"
#include "support/last_error.h"
#include "support/scratch_drives.h"
#include "support/triple.h"

namespace {

namespace fs = std::filesystem;
using Codes = std::vector<DWORD>;

// With the folders of the host that the two scratch folders are.
class NamesOnTheHost : public ScratchDrives {
  protected:
    static fs::path onHost(const std::string& path) {
        const auto drive = static_cast<std::size_t>(path[0] - 'C');
        auto below = path.substr(3);
        std::replace(below.begin(), below.end(), '\\', '/');
        return fs::path(machine::current().drives.at(drive).folder) / below;
    }
    static std::string here() {
        char text[MAX_PATH] = "";
        return GetCurrentDirectoryA(MAX_PATH, text) != 0 ? text : std::to_string(GetLastError());
    }
    static std::string full(const char* name) {
        char text[MAX_PATH] = "";
        return GetFullPathNameA(name, MAX_PATH, text, nullptr) != 0 ? text : "none";
    }
    ~NamesOnTheHost() override { SetCurrentDirectoryA("C:\\"); }
};

TEST_F(NamesOnTheHost, ThatAreNoneOfTheInterfaceLeadToTheirFileByTheirShortName) {
    write(c("outside"), "kept");
    const auto folder = c("found");
    for (const char* name : {"..\\outside", "a:b", "a*", "?", "con", "NUL.txt", "aux", "dot.",
                             "blank ", "\xFF", "tab\t", "..."}) {
        SCOPED_TRACE(name);
        fs::create_directory(onHost(folder));
        fs::create_directory(onHost(folder) / name);
        std::ofstream(onHost(folder) / name / "inner") << "content";
        WIN32_FIND_DATAA record;
        WIN32_FIND_DATAW first;
        const HANDLE search = FindFirstFileW(Wide(folder + "\\*~*"), &first);
        ASSERT_NE(search, INVALID_HANDLE_VALUE);
        const auto shown = folder + "\\" + narrow(first.cFileName);
        EXPECT_FALSE(FindNextFileA(search, &record));
        FindClose(search);
        EXPECT_EQ(read(shown + "\\inner"), "content");
        ASSERT_EQ(::chdir((onHost(folder) / name).c_str()), 0);
        EXPECT_EQ(here(), shown) << "entered by the host's own call";
        EXPECT_EQ(read("inner"), "content");
        SetCurrentDirectoryA("C:\\");
        removeTree(folder);
        EXPECT_FALSE(exists(folder));
    }
    EXPECT_EQ(read(c("outside")), "kept");
}

TEST_F(NamesOnTheHost, TheCurrentDirectoryIsNamedAsItWasEntered) {
    fs::create_directories(onHost(c("Target")) / "sub");
    fs::create_directory_symlink(onHost(d()), onHost(c("Link")));
    const auto in = [](std::string text) {
        EXPECT_TRUE(SetCurrentDirectoryA(text.c_str())) << text;
        return here();
    };
    EXPECT_EQ(in(c("TARGET\\.\\sub\\..\\")), c("TARGET"));
    EXPECT_EQ(in("SUB"), c("TARGET\\SUB"));
    EXPECT_EQ(in("c" + c("target").substr(1)), "c" + c("target").substr(1));
    EXPECT_EQ(in(c("link")), c("link"));
    write("\\" + c("outside").substr(3), "");
    EXPECT_TRUE(exists(c("outside"))) << "a link leads to another drive, and its name does not";
    auto machine = machine::current();
    machine.drives.push_back({.letter = 'N', .folder = onHost(c("Target")).string() + "/./"});
    machine.shares.push_back({"server", "share", onHost(c()).string()});
    const machine::ScopedMachine nested(machine);
    EXPECT_EQ(in(c("Target\\sub")), c("Target\\sub"));
    EXPECT_EQ(in("N:\\sub"), "N:\\sub");
    EXPECT_EQ(full("\\x"), "N:\\x");
    EXPECT_EQ(in("\\\\server\\share\\..\\..\\target"), "\\\\server\\share\\target");
    EXPECT_TRUE(exists("\\outside"));
}

TEST_F(NamesOnTheHost, WhatIsGoneIsMissing) {
    fs::create_directory(onHost(c("gone")));
    ASSERT_TRUE(SetCurrentDirectoryA(c("gone").c_str()));
    fs::remove(onHost(c("gone")));
    EXPECT_EQ(here(), std::to_string(ERROR_PATH_NOT_FOUND));
    for (const char* const name : {"file", "\\file", "C:file", "."}) {
        EXPECT_EQ(reported(Jw32FileFind, name), Report(0, ERROR_PATH_NOT_FOUND)) << name;
        EXPECT_EQ(full(name), "none");
    }
    SetCurrentDirectoryA("C:\\");
    auto machine = machine::current();
    machine.drives.push_back({.letter = 'G', .folder = onHost(c("gone")).string()});
    machine.drives.push_back({.letter = 'E', .folder = ""});
    const machine::ScopedMachine gone(machine);
    const auto codes = [](const std::string& root) {
        ULARGE_INTEGER free;
        return Codes{codeOf(Jw32FileFind((root + "file").c_str()) != 0),
                     codeOf(CreateDirectoryW(Wide(root + "new"), nullptr)),
                     codeOf(GetVolumeInformationW(Wide(root), nullptr, 0, nullptr, nullptr, nullptr,
                                                  nullptr, 0)),
                     codeOf(GetDiskFreeSpaceExA(root.c_str(), &free, nullptr, nullptr))};
    };
    constexpr DWORD missing = ERROR_PATH_NOT_FOUND, unready = ERROR_NOT_READY;
    EXPECT_EQ(codes("G:\\"), (Codes{missing, missing, unready, unready}));
    EXPECT_EQ(codes("E:\\"), (Codes{unready, unready, unready, unready}));
}

TEST_F(NamesOnTheHost, NoPathIsLongerThanAnyPathMayBe) {
    for (const std::size_t length : {32768, 12000000}) {
        const std::string name(length, 'x'), verbatim = "\\\\?\\C:\\" + name;
        for (const auto& path : {name, verbatim}) {
            EXPECT_EQ(reported(Jw32FileFind, path), Report(0, ERROR_FILENAME_EXCED_RANGE));
            EXPECT_EQ(codeOf(SetCurrentDirectoryA(path.c_str())),
                      DWORD{ERROR_FILENAME_EXCED_RANGE});
            EXPECT_EQ(full(path.c_str()), "none");
        }
    }
}

}  // namespace
