// Attributes and times of files.
//
// Read-only is the lack of write permission. Hidden, system and archive stand in the extended
// attribute user.DOSATTRIB; a file without one reports archive. Where the file system has no
// extended attributes, a table of this process keeps them for as long as it runs.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>

#include "fileapi.h"

namespace machine {

// The attributes that SetFileAttributesW sets; FILE_ATTRIBUTE_NORMAL stands for none of them.
inline constexpr DWORD settableAttributes = FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_HIDDEN |
                                            FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE |
                                            FILE_ATTRIBUTE_TEMPORARY;

// A link to a directory has these and no others.
inline constexpr DWORD directoryLinkAttributes =
    FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;

// Whether the name, whose status was found through the link, is that of a link to a directory. A
// link to nothing counts as one when its text is an absolute path.
bool isDirectoryLink(const std::string& path, const struct stat& status);

bool isReadOnly(const struct stat& status);
DWORD attributesOf(const std::string& path, const struct stat& status);

// The result is 0 or the error's code.
DWORD setAttributes(const std::string& path, const struct stat& status, DWORD attributes);

// Gives an open file the hidden, system, archive and temporary attributes of another one, whose
// status is known. The result is 0 or the error's code.
DWORD copyStoredAttributes(int from, const struct stat& status, int to);

FILETIME fileTime(const struct timespec& time);

struct FileTimes {
    FILETIME creation, access, write;
};
// The creation time is the host's birth time, or the earliest of the others where there is none.
FileTimes timesOf(const struct stat& status, const std::optional<timespec>& birth);

}  // namespace machine
