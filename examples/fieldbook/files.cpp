// Reading, writing and archiving, by the library's file operations.
#include "files.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>
#include <utility>
#include <vector>

#include <jw32/jw32.h>

namespace fieldbook {

namespace {

constexpr std::size_t longestBook = 64 << 20;  // bytes
constexpr DWORD blockSize = 64 << 10;          // bytes
constexpr int mostNumbers = 9999;

// Room for an error triple, and the message that it makes.
struct Reason {
    DWORD code = 0;
    char text[256] = "";

    // A clear triple tells of a condition that the operation has no code for: `otherwise` names it.
    [[noreturn]] void raise(const std::string& what, const std::string& otherwise) const {
        if (code == 0) throw FileError(what + ": " + otherwise);
        std::string reason = text;
        reason.erase(reason.find_last_not_of(" \r\n") + 1);
        throw FileError(what + ": " + reason + " (code " + std::to_string(code) + ")");
    }
};

// An open file that is closed at the end of the block.
class File {
  public:
    explicit File(HANDLE handle) : handle_(handle) {}
    ~File() {
        if (handle_ != INVALID_HANDLE_VALUE) CloseHandle(handle_);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;

    bool isOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
    HANDLE get() const { return handle_; }

  private:
    HANDLE handle_;
};

std::string quoted(const std::string& path) {
    return "'" + shown(path) + "'";
}

std::string fullPath(const std::string& path) {
    char full[MAX_PATH] = "";
    const DWORD length = GetFullPathNameA(path.c_str(), sizeof full, full, nullptr);
    if (length == 0 || length >= sizeof full)
        throw FileError(quoted(path) + ": the path is too long");
    return full;
}

void makeDirectory(const std::string& path, const std::string& shownAs) {
    Reason reason;
    const auto what = "cannot make the directory " + quoted(shownAs);
    if (!Jw32DirectoryCreate(path.c_str(), &reason.code, reason.text, sizeof reason.text)) {
        reason.raise(what, "the path is not complete");
    }
    // A file under that name counts as created.
    if (!Jw32DirectoryExist(path.c_str(), &reason.code, reason.text, sizeof reason.text)) {
        reason.raise(what, "a file has that name");
    }
}

// Whether a path names what has bytes and no place on a disk: a pipe, a terminal, or the program's
// own input, be it a file or not.
bool isStream(const std::string& path) {
    const auto hostPath = shown(path);
    if (path == standardInput || hostPath == "/dev/stdin" || hostPath.starts_with("/dev/fd/")) {
        return true;
    }
    std::error_code ignored;
    const auto type = std::filesystem::status(hostPath, ignored).type();
    return type == std::filesystem::file_type::fifo ||
           type == std::filesystem::file_type::character;
}

void append(std::string& bytes, std::string_view block, const std::string& path) {
    bytes += block;
    if (bytes.size() > longestBook)
        throw FileError(quoted(path) + " is too large for a field book");
}

// The C library waits for the bytes of a stream where ReadFile() may have none yet.
std::string readStream(const std::string& path) {
    using Stream = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;
    const Stream opened(path == standardInput ? nullptr : std::fopen(shown(path).c_str(), "rb"),
                        [](std::FILE* stream) { return std::fclose(stream); });
    std::FILE* const stream = path == standardInput ? stdin : opened.get();
    if (stream == nullptr) throw FileError("cannot open " + quoted(path));
    std::string bytes;
    std::vector<char> block(blockSize);
    while (const auto count = std::fread(block.data(), 1, block.size(), stream)) {
        append(bytes, {block.data(), count}, path);
    }
    if (std::ferror(stream)) throw FileError("cannot read " + quoted(path));
    return bytes;
}

std::string readFile(HANDLE file, const std::string& path) {
    std::string bytes;
    std::vector<char> block(blockSize);
    for (DWORD count = 0;; append(bytes, {block.data(), count}, path)) {
        if (!ReadFile(file, block.data(), blockSize, &count, nullptr)) {
            const auto code = std::to_string(GetLastError());
            throw FileError("cannot read " + quoted(path) + " (code " + code + ")");
        }
        if (count == 0) return bytes;
    }
}

std::string numberText(int number) {
    return number == 1 ? "" : "-" + std::to_string(number);
}

// A file that is being written. Until it has been moved to its name it is called NAME.part, or
// NAME.part-2 where there is one, and it is deleted unless it is moved.
class PartFile {
  public:
    PartFile(const std::string& name, const std::string& shownName)
        : what_("cannot write " + quoted(shownName)) {
        for (int number = 1; number <= mostNumbers; ++number) {
            path_ = name + ".part" + numberText(number);
            // Always a file of its own, which can be moved while it is open.
            handle_ =
                Jw32FileCreate(path_.c_str(), GENERIC_WRITE, CREATE_NEW, FILE_ATTRIBUTE_NORMAL,
                               FILE_SHARE_DELETE, &reason_.code, reason_.text, sizeof reason_.text);
            if (handle_ != INVALID_HANDLE_VALUE) return;
            if (reason_.code != ERROR_FILE_EXISTS) break;
        }
        reason_.raise(what_, "it cannot be created");
    }

    ~PartFile() {
        CloseHandle(handle_);
        if (isMoved_) return;
        const File deleted(Jw32FileOpen(path_.c_str(), DELETE, OPEN_EXISTING,
                                        FILE_FLAG_DELETE_ON_CLOSE, FILE_SHARE_DELETE));
    }

    PartFile(const PartFile&) = delete;
    PartFile& operator=(const PartFile&) = delete;

    void write(std::string_view bytes) {
        if (!Jw32FileWrite(handle_, bytes.data(), static_cast<DWORD>(bytes.size()), &reason_.code,
                           reason_.text, sizeof reason_.text)) {
            reason_.raise(what_, "the disk is full");
        }
    }

    // False: there is a file of that name. Throws FileError for any other failure.
    bool moveTo(const std::string& target) {
        isMoved_ = Jw32FileMove(path_.c_str(), target.c_str(), &reason_.code, reason_.text,
                                sizeof reason_.text) != 0;
        if (!isMoved_ && reason_.code != ERROR_ALREADY_EXISTS) {
            reason_.raise(what_, "it is not a file any more");
        }
        return isMoved_;
    }

  private:
    const std::string what_;
    std::string path_;
    HANDLE handle_ = INVALID_HANDLE_VALUE;
    Reason reason_;
    bool isMoved_ = false;
};

}  // namespace

PathParts splitPath(std::string_view path) {
    const auto separator = path.find_last_of("\\:");
    const auto start = separator == std::string_view::npos ? 0 : separator + 1;
    const auto name = path.substr(start);
    const auto dot = name.rfind('.');
    const bool hasExtension = dot != std::string_view::npos && dot > 0;
    return {std::string(path.substr(0, start)), std::string(name),
            std::string(name.substr(0, hasExtension ? dot : name.size()))};
}

std::string withBackslashes(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::string shown(std::string path) {
    constexpr auto separator = static_cast<char>(std::filesystem::path::preferred_separator);
    std::replace(path.begin(), path.end(), '\\', separator);
    return path;
}

Text readText(const std::string& path) {
    if (isStream(path)) return {readStream(path), false};
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        throw FileError(quoted(path) + " is a directory: name a field book in it");
    }
    Reason reason;
    const File file(Jw32FileOpen(path.c_str(), GENERIC_READ, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                                 FILE_SHARE_READ, &reason.code, reason.text, sizeof reason.text));
    if (!file.isOpen()) reason.raise("cannot open " + quoted(path), "it cannot be opened");
    return {readFile(file.get(), path), true};
}

std::string archive(const std::string& folder, const std::string& stem, const std::string& suffix,
                    std::string_view bytes) {
    // Jw32FileMove() renames, and refuses to replace, between full paths on one drive only.
    const auto directory = fullPath(folder + "archive");
    makeDirectory(directory, folder + "archive");
    PartFile part(directory + "\\" + stem + suffix, folder + "archive\\" + stem + suffix);
    part.write(bytes);
    for (int number = 1; number <= mostNumbers; ++number) {
        const auto name = stem + numberText(number) + suffix;
        if (part.moveTo(directory + "\\" + name)) return folder + "archive\\" + name;
    }
    throw FileError("the archive has " + std::to_string(mostNumbers) + " reports of " +
                    quoted(stem + suffix));
}

}  // namespace fieldbook
