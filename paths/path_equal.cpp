// Whether two paths name the same thing.
#include <windows.h>

#include <cstring>

#include "frame/multibyte.h"
#include "jw32/paths.h"
#include "paths/name_parts.h"

namespace {

// Stores the short form of a path, or the path itself where there is none. False: it is too long.
bool comparableForm(const char* path, char (&form)[MAX_PATH]) {
    const DWORD length = GetShortPathNameA(path, form, MAX_PATH);
    if (length != 0 && length < MAX_PATH && form[0] != '\0') return true;
    if (std::strlen(path) >= MAX_PATH) return false;
    strcpy_s(form, MAX_PATH, path);
    return true;
}

void completeDirectory(PathParts& parts) {
    if (parts.directory[0] == '\0') parts.directory[0] = '\\';
}

}  // namespace

int Jw32PathIsEqual(const char* pszPath1, const char* pszPath2) {
    if (Jw32DriveIsEqual(pszPath1, pszPath2) == 0) return 0;
    char form1[MAX_PATH] = "";
    char form2[MAX_PATH] = "";
    if (!comparableForm(pszPath1, form1) || !comparableForm(pszPath2, form2)) return 0;
    PathParts first;
    PathParts second;
    if (!split(form1, first) || !split(form2, second)) return 0;
    completeDirectory(first);
    completeDirectory(second);
    if (!multibyte::equalIgnoringCase(first.directory, second.directory)) return 0;
    return isSameName(first, second) ? 1 : 0;
}
