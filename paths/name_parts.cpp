// Splitting and comparing names.
#include "paths/name_parts.h"

#include <cstdlib>

#include "frame/multibyte.h"

namespace {

void completeExtension(NameParts& parts) {
    if (parts.extension[0] == '\0') parts.extension[0] = '.';
}

}  // namespace

bool split(const char* path, NameParts& parts) {
    return _splitpath_s(path, nullptr, 0, nullptr, 0, parts.base, sizeof parts.base,
                        parts.extension, sizeof parts.extension) == 0;
}

bool split(const char* path, PathParts& parts) {
    return _splitpath_s(path, nullptr, 0, parts.directory, sizeof parts.directory, parts.base,
                        sizeof parts.base, parts.extension, sizeof parts.extension) == 0;
}

bool isSameName(NameParts& left, NameParts& right) {
    if (!multibyte::equalIgnoringCase(left.base, right.base)) return false;
    completeExtension(left);
    completeExtension(right);
    return multibyte::equalIgnoringCase(left.extension, right.extension);
}
