// Reading, writing and archiving, by the library's file operations.
#include "files.h"

#include <windows.h>

#include <algorithm>
#include <filesystem>

#include <jw32/jw32.h>

namespace fieldbook {

namespace {

constexpr DWORD longestBook = 1 << 20;
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

// Jw32FileMove() renames, and refuses to replace, between full paths on one drive only; between
// relative ones it copies over what is there.
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

std::string readFile(const std::string& path) {
    if (Jw32DirectoryExist(path.c_str())) {
        throw FileError(quoted(path) + " is a directory: name a field book in it");
    }
    Reason reason;
    const File file(Jw32FileOpen(path.c_str(), GENERIC_READ, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL,
                                 FILE_SHARE_READ, &reason.code, reason.text, sizeof reason.text));
    if (!file.isOpen()) reason.raise("cannot open " + quoted(path), "it cannot be opened");

    const LONG size = Jw32FileSize(file.get(), &reason.code, reason.text, sizeof reason.text);
    if (size == -1) reason.raise("cannot tell the size of " + quoted(path), "it is too large");
    const auto count = static_cast<DWORD>(size);
    if (count > longestBook) throw FileError(quoted(path) + " is too large for a field book");

    std::string bytes(count, '\0');
    if (!Jw32FileRead(file.get(), bytes.data(), count, &reason.code, reason.text,
                      sizeof reason.text)) {
        reason.raise("cannot read " + quoted(path), "it ended early");
    }
    return bytes;
}

void writeFile(const std::string& path, std::string_view bytes) {
    Reason reason;
    const auto what = "cannot write " + quoted(path);
    const File file(Jw32FileCreate(path.c_str(), GENERIC_WRITE, CREATE_ALWAYS,
                                   FILE_ATTRIBUTE_NORMAL, 0, &reason.code, reason.text,
                                   sizeof reason.text));
    if (!file.isOpen()) reason.raise(what, "it cannot be created");
    if (!Jw32FileWrite(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &reason.code,
                       reason.text, sizeof reason.text)) {
        reason.raise(what, "not all of it was written");
    }
}

std::string archive(const std::string& path, std::string_view suffix) {
    const auto parts = splitPath(path);
    const auto full = fullPath(path);
    const auto directory = splitPath(full).folder + "archive";
    makeDirectory(directory, parts.folder + "archive");

    const auto stem = parts.name.substr(0, parts.name.size() - suffix.size());
    Reason reason;
    for (int number = 1; number <= mostNumbers; ++number) {
        const auto name =
            stem + (number == 1 ? "" : "-" + std::to_string(number)) + std::string(suffix);
        const auto target = directory + "\\" + name;
        if (Jw32FileMove(full.c_str(), target.c_str(), &reason.code, reason.text,
                         sizeof reason.text)) {
            return parts.folder + "archive\\" + name;
        }
        if (reason.code != ERROR_ALREADY_EXISTS) break;
    }
    reason.raise("cannot move " + quoted(path) + " into the archive", "it is not a file any more");
}

}  // namespace fieldbook
