// Which characters may stand in a file name.
#include <windows.h>

#include <shlwapi.h>

#include "frame/multibyte.h"
#include "jw32/file_names.h"

namespace {

UINT classOf(const char* character) {
    return PathGetCharTypeA(static_cast<unsigned char>(*character));
}

}  // namespace

int Jw32FilenameIsValid(const char* pszName) {
    if (pszName == nullptr || *pszName == '\0') return 0;
    bool blanksOnly = true;
    for (const char* at = pszName; *at != '\0'; at = multibyte::next(at)) {
        if ((classOf(at) & (GCT_LFNCHAR | GCT_SHORTCHAR)) == 0) return 0;
        if (*at != ' ') blanksOnly = false;
    }
    return blanksOnly ? 0 : 1;
}

unsigned int Jw32ReplaceInvalidFilenameCharacters(char* pszName, char cReplace,
                                                  unsigned int uAllowed) {
    if (pszName == nullptr) return 0;
    unsigned int replaced = 0;
    for (char* at = pszName; *at != '\0'; at = multibyte::next(at)) {
        if ((classOf(at) & uAllowed) != 0) continue;
        *at = cReplace;
        ++replaced;
    }
    return replaced;
}
