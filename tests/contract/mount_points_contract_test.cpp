// What the library expects of mount points. Known difference: Wine does not have them; of its
// volumes no flag says so, and the control code is refused as not supported.
#include <gtest/gtest.h>
#include <windows.h>

#include <winioctl.h>

#include <cstring>
#include <string>
#include <vector>

#include "contract/wine.h"
#include "support/scratch_drives.h"
#include "support/wide.h"

namespace {

// REPARSE_DATA_BUFFER for the name of a target.
std::vector<unsigned char> mountPoint(const std::string& name, DWORD tag) {
    const auto length = static_cast<WORD>(2 * name.size());
    const WORD header[] = {static_cast<WORD>(tag),
                           static_cast<WORD>(tag >> 16),
                           static_cast<WORD>(length + 12),
                           0,
                           0,
                           length,
                           static_cast<WORD>(length + 2),
                           0};
    std::vector<unsigned char> bytes(length + 20u);
    std::memcpy(bytes.data(), header, sizeof header);
    for (std::size_t i = 0; i < name.size(); ++i) {
        bytes[16 + 2 * i] = static_cast<unsigned char>(name[i]);
    }
    return bytes;
}

class MountPoints : public ScratchDrives {
  protected:
    MountPoints() {
        Jw32DirectoryCreate(c("target\\sub").c_str());
        Jw32DirectoryCreate(c("link").c_str());
    }
    // The code of setting a mount point; 0: it is set.
    DWORD set(const std::string& path, std::vector<unsigned char> bytes,
              DWORD access = GENERIC_WRITE) const {
        const HANDLE file =
            CreateFileW(Wide(path), access, 0, nullptr, OPEN_EXISTING,
                        FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        EXPECT_NE(file, INVALID_HANDLE_VALUE) << path;
        DWORD unused = 0;
        const BOOL done =
            DeviceIoControl(file, FSCTL_SET_REPARSE_POINT, bytes.data(),
                            static_cast<DWORD>(bytes.size()), nullptr, 0, &unused, nullptr);
        const DWORD code = done ? DWORD{ERROR_SUCCESS} : GetLastError();
        CloseHandle(file);
        return code;
    }
    static DWORD expected(DWORD code) { return onWine() ? DWORD{ERROR_NOT_SUPPORTED} : code; }
    std::string targetName() const { return "\\??\\" + c("target"); }
};

TEST_F(MountPoints, AreAnnouncedByTheVolume) {
    DWORD longest = 0, flags = 0;
    const BOOL done =
        GetVolumeInformationW(Wide("C:\\"), nullptr, 0, nullptr, &longest, &flags, nullptr, 0);
    EXPECT_TRUE(done);
    EXPECT_EQ((flags & FILE_SUPPORTS_REPARSE_POINTS) != 0, !onWine());
}

TEST_F(MountPoints, AreSetOnAnEmptyDirectory) {
    const DWORD code = set(c("link"), mountPoint(targetName(), IO_REPARSE_TAG_MOUNT_POINT));
    EXPECT_EQ(code, expected(ERROR_SUCCESS));
    EXPECT_EQ(exists(c("link\\sub")), !onWine());
    EXPECT_EQ((attributes(c("link")) & FILE_ATTRIBUTE_REPARSE_POINT) != 0, !onWine());
}

TEST_F(MountPoints, AreRefusedOnOtherThings) {
    const auto point = mountPoint(targetName(), IO_REPARSE_TAG_MOUNT_POINT);
    EXPECT_EQ(set(c("target"), point), expected(ERROR_DIR_NOT_EMPTY));
    EXPECT_TRUE(exists(c("target\\sub")));
    write(c("file"), "content");
    EXPECT_EQ(set(c("file"), point), expected(ERROR_DIRECTORY));
    EXPECT_EQ(read(c("file")), "content");
}

TEST_F(MountPoints, AreRefusedFromABufferThatIsNotSound) {
    const auto sound = mountPoint(targetName(), IO_REPARSE_TAG_MOUNT_POINT);
    auto tooLong = sound;
    tooLong[10] = 0xF0;  // the name's length
    auto cut = sound;
    cut.pop_back();
    for (const auto& bytes : {tooLong, cut, std::vector<unsigned char>(4)}) {
        EXPECT_EQ(set(c("link"), bytes), expected(ERROR_INVALID_REPARSE_DATA)) << bytes.size();
    }
    EXPECT_EQ(attributes(c("link")), DWORD{FILE_ATTRIBUTE_DIRECTORY});
}

TEST_F(MountPoints, NeedAnOpenHandle) {
    DWORD unused = 0;
    auto bytes = mountPoint(targetName(), IO_REPARSE_TAG_MOUNT_POINT);
    const HANDLE stranger = reinterpret_cast<HANDLE>(INT_PTR{0x7774});
    const BOOL done =
        DeviceIoControl(stranger, FSCTL_SET_REPARSE_POINT, bytes.data(),
                        static_cast<DWORD>(bytes.size()), nullptr, 0, &unused, nullptr);
    const DWORD code = GetLastError();
    EXPECT_FALSE(done);
    EXPECT_EQ(code, DWORD{ERROR_INVALID_HANDLE});
}

// A directory that is open without sharing is not opened a second time.
TEST_F(MountPoints, ADirectoryCanBeHeldForOneself) {
    const auto open = [this](DWORD share) {
        return CreateFileW(Wide(c("link")), GENERIC_WRITE, share, nullptr, OPEN_EXISTING,
                           FILE_FLAG_OPEN_REPARSE_POINT | FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    };
    const HANDLE first = open(0);
    ASSERT_NE(first, INVALID_HANDLE_VALUE);
    const HANDLE second = open(FILE_SHARE_READ | FILE_SHARE_WRITE);
    const DWORD code = GetLastError();
    EXPECT_EQ(second, INVALID_HANDLE_VALUE);
    EXPECT_EQ(code, DWORD{ERROR_SHARING_VIOLATION});
    CloseHandle(first);
}

}  // namespace
