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

// The whole file, which may have up to 1 MB. Throws FileError.
std::string readFile(const std::string& path);

// Makes the file, or replaces it. Throws FileError.
void writeFile(const std::string& path, std::string_view bytes);

// Moves a file into the directory "archive" beside it, which is made if it is not there. What is
// there already stays: the newcomer gets a number then, as in "x.report-2.txt".
// `suffix` is what the number goes in front of, ".txt" here.
// Returns the new path, in the folder as the caller wrote it. Throws FileError.
std::string archive(const std::string& path, std::string_view suffix);

}  // namespace fieldbook
