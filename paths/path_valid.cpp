// Whether a path is well formed and on an accepted drive.
#include <windows.h>

#include <shlwapi.h>

#include <cstdlib>
#include <cstring>

#include "frame/multibyte.h"
#include "frame/name_conversion.h"
#include "frame/owner.h"
#include "jw32/paths.h"

namespace {

constexpr std::size_t longestCanonicalForm = 260;  // bytes

UniqueText workingCopy(const char* path) {
    if (std::strlen(path) >= MAX_PATH) return UniqueText(_strdup(path));
    return UniqueText(static_cast<char*>(std::malloc(MAX_PATH)));
}

// Cuts the path down to its root and judges the drive by it.
bool isOnAcceptedDrive(char* path, bool acceptRemovable, int* isRemovable) {
    PathStripToRootA(path);
    const UINT kind = GetDriveTypeA(path);
    if (kind == DRIVE_UNKNOWN || kind == DRIVE_NO_ROOT_DIR) return false;
    if (kind != DRIVE_REMOVABLE) return true;
    if (isRemovable != nullptr) *isRemovable = 1;
    return acceptRemovable;
}

// Only the first double backslash is looked at, so that of a UNC path hides the others.
bool hasInnerDoubleBackslash(const char* path) {
    const char* const found = multibyte::find(path, "\\\\");
    return found != nullptr && found != path;
}

bool isRelativeToDrive(const char* path) {
    return std::strlen(path) > 2 && path[1] == ':' && path[2] != '\\';
}

// Whether every character may stand in a path, and not all are blanks.
bool hasValidCharacters(const char* path) {
    constexpr UINT allowed = GCT_LFNCHAR | GCT_SHORTCHAR | GCT_SEPARATOR;
    bool blanksOnly = true;
    for (const char* at = path; *at != '\0'; at = multibyte::next(at)) {
        if ((PathGetCharTypeA(static_cast<unsigned char>(*at)) & allowed) == 0) return false;
        if (*at != ' ') blanksOnly = false;
    }
    return !blanksOnly;
}

bool hasLateColon(const char* path) {
    const char* const colon = multibyte::findLast(path, ':');
    return colon != nullptr && colon - path > 1;
}

}  // namespace

int Jw32PathIsValid(const char* pszPath, int bRemovable, int* pbIsRemovable) {
    if (pbIsRemovable != nullptr) *pbIsRemovable = 0;
    if (pszPath == nullptr || *pszPath == '\0') return 0;
    const UniqueText copy = workingCopy(pszPath);
    if (!copy || !PathCanonicalizeA(copy.get(), pszPath)) return 0;
    if (std::strlen(copy.get()) > longestCanonicalForm) return 0;
    if (!PathIsUNCW(Jw32WideName(copy.get())) &&
        !isOnAcceptedDrive(copy.get(), bRemovable != 0, pbIsRemovable)) {
        return 0;
    }
    if (hasInnerDoubleBackslash(pszPath)) return 0;
    // Once more, as the drive's judgement has cut the copy.
    PathCanonicalizeA(copy.get(), pszPath);
    if (isRelativeToDrive(copy.get()) || !hasValidCharacters(copy.get())) return 0;
    return hasLateColon(copy.get()) ? 0 : 1;
}
