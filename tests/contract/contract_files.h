// The fixture of the tests about files: the scratch drives, and opening that tells its code.
#pragma once

#include <ostream>

#include "support/scratch_drives.h"
#include "support/wide.h"
#include "wine.h"

inline constexpr DWORD shareNothing = 0;
// Known differences that concern several tests, in words.
inline constexpr const char* wineLetsRootWrite =
    "Wine leaves read-only to the host's permissions, which do not bind its administrator";
inline constexpr const char* wineMissesDrives =
    "Wine takes a missing drive for a missing file, where Windows misses the path";

inline constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// A handle that CreateFileW gave, closed at the end.
class Opened {
  public:
    Opened(const wchar_t* name, DWORD access, DWORD share, DWORD disposition, DWORD flags = 0) {
        SetLastError(untouched);
        handle = CreateFileW(name, access, share, nullptr, disposition, flags, nullptr);
        code = GetLastError();
    }
    ~Opened() {
        if (*this) CloseHandle(handle);
    }
    Opened(const Opened&) = delete;
    Opened& operator=(const Opened&) = delete;
    explicit operator bool() const { return handle != INVALID_HANDLE_VALUE; }

    HANDLE handle;
    DWORD code;  // the last error behind the call

  private:
    static constexpr DWORD untouched = 4711;
};

class ContractFiles : public ScratchDrives {
  protected:
    // The last error of a call that gave a Boolean; 0 when the call succeeded.
    template <class Call>
    static DWORD codeOf(Call call) {
        SetLastError(0);
        return call() ? 0 : GetLastError();
    }
    DWORD makeFolder(const std::string& name) const {
        return codeOf([&] { return CreateDirectoryW(Wide(c(name)), nullptr); });
    }
    // The code of opening for reading; 0: it can be opened.
    static DWORD openCode(const std::string& path) {
        const Opened file(Wide(path), GENERIC_READ, shareAll, OPEN_EXISTING);
        return file ? 0 : file.code;
    }
    void makeHidden(const std::string& name, DWORD attributes) const {
        write(c(name), "content");
        EXPECT_TRUE(SetFileAttributesW(Wide(c(name)), attributes)) << name;
    }
};
