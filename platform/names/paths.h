// Paths of the interface and where they lie on the host.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/machine.h"
#include "windef.h"

namespace machine {

// A path of the interface, made absolute and taken apart.
struct Path {
    enum class Kind { Invalid, File, NullDevice };

    Kind kind = Kind::Invalid;
    DWORD error = 0;                           // why the path is invalid
    const Drive* drive = nullptr;              // null: a share
    const Share* share = nullptr;              // null: a drive
    char16_t letter = 0;                       // of the drive, as it was written; 0: its own
    std::vector<std::u16string> components{};  // without "." and ".."; empty: the root
    bool trailingSeparator = false;

    // Why the path names no file; 0: it names one, existing or not.
    DWORD fileError() const;
    bool isRoot() const { return components.empty(); }
    // "C:" or "\\server\share".
    std::u16string rootText() const;
    // "C:\a\b" or "\\server\share\a\b".
    std::u16string text() const;
    // The folder on the host that the root stands for, without a last slash.
    std::string hostRoot() const;
};

enum class Wildcards { Refused, InLastComponent };

// The most characters of any path, as the counted strings of Windows hold.
inline constexpr std::size_t longestPath = 32767;

// Relative paths go by the current directory. An unknown drive or share, a drive that is not ready,
// a name with characters that no name may hold, a path of 260 characters or more without the
// "\\?\" prefix and one longer than any path are invalid; so are paths that need the current
// directory after that was removed.
Path parsePath(const wchar_t* text, Wildcards wildcards = Wildcards::Refused);
Path parsePath(std::u16string_view text, Wildcards wildcards = Wildcards::Refused);

// A host path, absolute and without links, as a path of the interface: on the drive whose folder
// holds it most closely. What can be no name of the interface is shown by its short one.
Path pathOfHost(const std::string& host);

// The current directory as a path of the interface, invalid after it was removed. It is named as it
// was when it was entered; where the host's own calls have changed it since, by the host's names.
Path currentDirectory();

// Keeps the name of the directory that has just become the host's current one.
void nameCurrentDirectory(const Path& path);

}  // namespace machine
