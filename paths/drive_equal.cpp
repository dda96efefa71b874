// Whether two paths lie on the same drive.
#include <windows.h>

#include <shlwapi.h>

#include <cstring>

#include "frame/multibyte.h"
#include "frame/name_conversion.h"
#include "jw32/paths.h"

namespace {

bool isTooShort(const char* path) {
    return path == nullptr || path[0] == '\0' || path[1] == '\0';
}

// A bare drive, or server and share, becomes a complete root. Nothing is added to a full array, and
// the question is not left to the platform: not every one asks it in time.
void completeRoot(char (&path)[MAX_PATH]) {
    if (std::strlen(path) < MAX_PATH - 1) PathAddBackslashA(path);
}

}  // namespace

int Jw32DriveIsEqual(const char* pszPath1, const char* pszPath2) {
    if (isTooShort(pszPath1) || isTooShort(pszPath2)) return 0;
    char first[MAX_PATH] = "";
    char second[MAX_PATH] = "";
    multibyte::copy(first, pszPath1, sizeof first - 1);
    multibyte::copy(second, pszPath2, sizeof second - 1);
    completeRoot(first);
    completeRoot(second);
    const Jw32WideName wideFirst(first);
    const Jw32WideName wideSecond(second);
    return PathIsSameRootW(wideFirst, wideSecond);
}
