// What the library expects of mount points. Known difference: Wine does not have them; of its
// volumes no flag says so, and the control code is refused as not supported.
#include <gtest/gtest.h>
#include <windows.h>

#include <winioctl.h>

#include <tuple>

#include "contract/wine.h"
#include "support/last_error.h"
#include "support/scratch_drives.h"
#include "support/wide.h"

namespace {

// REPARSE_DATA_BUFFER for the name of a target.
std::string mountPoint(const std::string& name) {
    const auto length = static_cast<WORD>(2 * name.size());
    const WORD header[] = {3, 0xA000, static_cast<WORD>(length + 12), 0,
                           0, length, static_cast<WORD>(length + 2),  0};
    std::string bytes(reinterpret_cast<const char*>(header), sizeof header);
    for (const char character : name + std::string(2, '\0')) bytes += {character, '\0'};
    return bytes;
}

class MountPoints : public ScratchDrives {
  protected:
    MountPoints() {
        Jw32DirectoryCreate(c("target\\sub").c_str());
        Jw32DirectoryCreate(c("link").c_str());
        write(c("file"), "content");
    }
    HANDLE open(const char* name) const {
        return CreateFileW(Wide(c(name)), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                           FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    }
    // The code of setting a mount point; 0: it is set.
    static DWORD set(HANDLE file, std::string bytes) {
        const auto size = static_cast<DWORD>(bytes.size());
        DWORD unused = 0;
        const DWORD code = codeOf(DeviceIoControl(file, FSCTL_SET_REPARSE_POINT, bytes.data(), size,
                                                  nullptr, 0, &unused, nullptr));
        CloseHandle(file);
        return code;
    }
};

TEST_F(MountPoints, AreSetOnAnEmptyDirectoryFromASoundBuffer) {
    DWORD flags = 0;
    const Wide root("C:\\");
    EXPECT_TRUE(GetVolumeInformationW(root, nullptr, 0, nullptr, nullptr, &flags, nullptr, 0));
    EXPECT_EQ((flags & FILE_SUPPORTS_REPARSE_POINTS) != 0, !onWine());
    const auto sound = mountPoint("\\??\\" + c("target")), cut = sound.substr(0, sound.size() - 1);
    auto tooLong = sound;
    tooLong[14] = '\xF0';  // the print name's length
    const std::tuple<const char*, std::string, DWORD> rows[] = {
        {"link", tooLong, ERROR_INVALID_REPARSE_DATA},
        {"link", cut, ERROR_INVALID_REPARSE_DATA},
        {"link", "none", ERROR_INVALID_REPARSE_DATA},
        {"target", sound, ERROR_DIR_NOT_EMPTY},
        {"file", sound, ERROR_DIRECTORY},
        {"link", sound, ERROR_SUCCESS}};
    for (const auto& [place, bytes, code] : rows) {
        EXPECT_EQ(attributes(c("link")), DWORD{FILE_ATTRIBUTE_DIRECTORY});
        EXPECT_EQ(set(open(place), bytes), onWine() ? DWORD{ERROR_NOT_SUPPORTED} : code) << place;
    }
    EXPECT_EQ((attributes(c("link")) & FILE_ATTRIBUTE_REPARSE_POINT) != 0, !onWine());
    EXPECT_EQ(exists(c("link\\sub")), !onWine());
    EXPECT_TRUE(exists(c("target\\sub")));
    EXPECT_EQ(read(c("file")), "content");
    EXPECT_EQ(set(reinterpret_cast<HANDLE>(INT_PTR{0x7774}), sound), DWORD{ERROR_INVALID_HANDLE});
}

}  // namespace
