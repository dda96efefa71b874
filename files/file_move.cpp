// Moving of a file, within a drive and between drives.
#include "files/first_match.h"
#include "frame/error_triple.h"
#include "frame/name_conversion.h"
#include "jw32/files.h"
#include "jw32/paths.h"

namespace {

bool isEmpty(const char* name) {
    return name == nullptr || *name == '\0';
}

bool renameFile(const char* from, const char* to) {
    const Jw32WideName wideFrom(from);
    const Jw32WideName wideTo(to);
    return MoveFileW(wideFrom, wideTo) != 0;
}

bool copyOver(const char* from, const char* to) {
    const Jw32WideName wideFrom(from);
    const Jw32WideName wideTo(to);
    return CopyFileW(wideFrom, wideTo, FALSE) != 0;
}

// A copy whose source cannot be deleted stays.
bool copyAndDelete(const char* from, const char* to) {
    return copyOver(from, to) && DeleteFileW(Jw32WideName(from)) != 0;
}

}  // namespace

int Jw32FileMove(const char* pszFrom, const char* pszTo, DWORD* pdwError, char* pszError,
                 DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    if (isEmpty(pszFrom) || isEmpty(pszTo)) return 0;
    const auto attributes = attributesOfFirstMatch(pszFrom);
    if (!attributes) return triple.fail(0);
    if ((*attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return 0;
    const bool sameDrive = Jw32DriveIsEqual(pszFrom, pszTo) != 0;
    const bool moved = sameDrive ? renameFile(pszFrom, pszTo) : copyAndDelete(pszFrom, pszTo);
    return moved ? 1 : triple.fail(0);
}
