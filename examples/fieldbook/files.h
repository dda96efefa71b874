// Reading, writing and archiving, by the library's file operations.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

namespace fieldbook {

// What went wrong with a file, and the system's reason: "cannot open x: File not found. (2)".
class FileError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// A path with backslashes, taken apart behind its last one. Text alone: the disk is not asked.
struct PathParts {
    std::string folder;    // with its last separator; empty for a plain name
    std::string name;      // with its extension
    std::string baseName;  // without it
};
PathParts splitPath(std::string_view path);

// A path as the library wants it: in some operations only the backslash separates.
std::string withBackslashes(std::string path);

// A path with the separators of the system that the program runs on, for people to read and copy.
std::string shown(std::string path);

constexpr std::string_view standardInput = "-";

struct Text {
    std::string bytes;
    bool isFile = false;  // not a pipe, a terminal or the standard input
};

// What the path names, or the standard input, to its end: up to 64 MB. Throws FileError.
Text readText(const std::string& path);

// Makes a file with these bytes in the directory "archive" of `folder`, which is made if it is not
// there. What the archive has already stays: the newcomer gets a number then, as in "x-2.txt".
// The name appears when all bytes are written, or not at all.
// `folder` is empty or ends in a separator, and `suffix` is what the number goes in front of.
// Returns the new path, in the folder as the caller wrote it. Throws FileError.
std::string archive(const std::string& folder, const std::string& stem, const std::string& suffix,
                    std::string_view bytes);

}  // namespace fieldbook
