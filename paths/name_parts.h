// The parts of a path, for comparison.
#pragma once

/// Base name and extension of a path, each of at most 255 bytes.
struct NameParts {
    char base[256] = "";
    char extension[256] = "";  ///< with its dot
};

/// Directory, base name and extension of a path, each of at most 255 bytes.
struct PathParts : NameParts {
    char directory[256] = "";  ///< with its last separator
};

/// Splits a path; the drive is left out. False: a part is too long.
bool split(const char* path, NameParts& parts);
bool split(const char* path, PathParts& parts);

/// Whether base name and extension are the same but for case, where no extension is as good as a
/// bare dot. Completes an empty extension.
bool isSameName(NameParts& left, NameParts& right);
