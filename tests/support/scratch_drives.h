// A fixture with an empty folder on each of two drives, and short ways to files in them.
#pragma once

#include <gtest/gtest.h>
#include <jw32/directories.h>
#include <jw32/files.h>

#include <string>

#include "support/remove_tree.h"

class ScratchDrives : public testing::Test {
  protected:
    ScratchDrives() {
        Jw32DirectoryCreate(c().c_str());
        Jw32DirectoryCreate(d().c_str());
    }
    ~ScratchDrives() override {
        removeTree(c());
        removeTree(d());
    }

    // The full name of something in the folder on C: or D:, or that of the folder.
    std::string c(const std::string& name = "") const { return in("C:", name); }
    std::string d(const std::string& name = "") const { return in("D:", name); }

    static bool exists(const std::string& path) {
        return attributes(path) != INVALID_FILE_ATTRIBUTES;
    }
    static DWORD attributes(const std::string& path) { return GetFileAttributesA(path.c_str()); }

    static void write(const std::string& path, const std::string& content) {
        void* const file = Jw32FileCreate(path.c_str(), GENERIC_WRITE, CREATE_ALWAYS, 0, 0);
        ASSERT_NE(file, INVALID_HANDLE_VALUE) << path;
        EXPECT_TRUE(Jw32FileWrite(file, content.data(), static_cast<DWORD>(content.size())));
        CloseHandle(file);
    }

    static std::string read(const std::string& path) {
        void* const file =
            Jw32FileOpen(path.c_str(), GENERIC_READ, OPEN_EXISTING, 0, FILE_SHARE_READ);
        std::string content(4096, '\0');
        DWORD length = 0;
        EXPECT_TRUE(ReadFile(file, content.data(), 4096, &length, nullptr)) << path;
        CloseHandle(file);
        content.resize(length);
        return content;
    }

  private:
    static std::string in(const char* drive, const std::string& name) {
        const auto folder = drive + ("\\jw32-test-" + std::to_string(GetCurrentProcessId()));
        return name.empty() ? folder : folder + "\\" + name;
    }
};
