// Paths of the interface and where they lie on the host.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "machine/machine.h"
#include "windef.h"

namespace machine {

// A path of the interface, made absolute and taken apart.
struct Path {
    enum class Kind { Invalid, File, NullDevice };

    Kind kind = Kind::Invalid;
    DWORD error = 0;                           // why the path is invalid
    const Drive* drive = nullptr;              // null: a share
    const Share* share = nullptr;              // null: a drive
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

// Relative paths go by the current directory. An unknown drive or share, a drive that is not ready,
// a name with characters that no name may hold and a path of 260 characters or more without the
// "\\?\" prefix are invalid.
Path parsePath(const wchar_t* text, Wildcards wildcards = Wildcards::Refused);
Path parsePath(std::u16string_view text, Wildcards wildcards = Wildcards::Refused);

// A host path, absolute and without links, as a path of the interface: on the drive whose folder
// holds it most closely.
Path pathOfHost(const std::string& host);

// The current directory as a path of the interface.
Path currentDirectory();

}  // namespace machine
