// The fixture of the tests about files: the scratch drives, and opening that tells its code.
#pragma once

#include "support/last_error.h"
#include "support/scratch_drives.h"
#include "support/wide.h"
#include "wine.h"

// A known difference that concerns several tests, in words.
inline constexpr const char* wineLetsRootWrite =
    "Wine leaves read-only to the host's permissions, which do not bind its administrator";

inline constexpr DWORD reading = GENERIC_READ, writing = GENERIC_WRITE;
inline constexpr DWORD shareNothing = 0, shareRead = FILE_SHARE_READ;
inline constexpr DWORD shareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
inline constexpr DWORD normal = FILE_ATTRIBUTE_NORMAL, directory = FILE_ATTRIBUTE_DIRECTORY;
inline constexpr DWORD readOnly = FILE_ATTRIBUTE_READONLY, hidden = FILE_ATTRIBUTE_HIDDEN;
inline constexpr DWORD archive = FILE_ATTRIBUTE_ARCHIVE, badParameter = ERROR_INVALID_PARAMETER;
inline constexpr DWORD noFile = ERROR_FILE_NOT_FOUND, noPath = ERROR_PATH_NOT_FOUND;
inline constexpr DWORD denied = ERROR_ACCESS_DENIED, inUse = ERROR_SHARING_VIOLATION;
inline constexpr DWORD fileThere = ERROR_FILE_EXISTS, alreadyThere = ERROR_ALREADY_EXISTS;
inline constexpr DWORD badName = ERROR_INVALID_NAME, badHandle = ERROR_INVALID_HANDLE;

using PathCode = std::pair<std::string, DWORD>;

inline std::string narrow(const wchar_t* text) {
    char result[MAX_PATH] = "";
    WideCharToMultiByte(CP_ACP, 0, text, -1, result, sizeof result, nullptr, nullptr);
    return result;
}

// A handle that CreateFileW gave, closed at the end.
class Opened {
  public:
    Opened(const std::string& name, DWORD access, DWORD share, DWORD disposition, DWORD flags = 0)
        : handle((SetLastError(4711),
                  CreateFileW(Wide(name), access, share, nullptr, disposition, flags, nullptr))),
          code(GetLastError()) {}
    ~Opened() {
        if (*this) CloseHandle(handle);
    }
    Opened(const Opened&) = delete;
    explicit operator bool() const { return handle != INVALID_HANDLE_VALUE; }

    const HANDLE handle;
    const DWORD code;  // the last error behind the call
};

// A file and a folder to work on.
class ContractFiles : public ScratchDrives {
  protected:
    ContractFiles() {
        makeFolder(c("folder"));
        write(c("file"), "content");
    }
    // The code of opening for reading; 0: it can be opened.
    static DWORD openCode(const std::string& path) {
        const Opened file(path, reading, shareAll, OPEN_EXISTING);
        return file ? 0 : file.code;
    }
    static DWORD makeFolder(const std::string& path) {
        return codeOf(CreateDirectoryW(Wide(path), nullptr));
    }
    static DWORD setAttributes(const std::string& path, DWORD attributes) {
        return codeOf(SetFileAttributesW(Wide(path), attributes));
    }
    static WIN32_FIND_DATAW record(const std::string& path) {
        WIN32_FIND_DATAW result{};
        EXPECT_TRUE(FindClose(FindFirstFileW(Wide(path), &result))) << path;
        return result;
    }
};
