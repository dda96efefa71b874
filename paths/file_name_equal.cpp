// Whether two paths end in the same file name.
#include "jw32/file_names.h"
#include "paths/name_parts.h"

namespace {

bool isTooShort(const char* name) {
    return name == nullptr || name[0] == '\0' || name[1] == '\0';
}

}  // namespace

int Jw32FilenameIsEqual(const char* pszName1, const char* pszName2) {
    if (isTooShort(pszName1) || isTooShort(pszName2)) return 0;
    NameParts first;
    NameParts second;
    if (!split(pszName1, first) || !split(pszName2, second)) return 0;
    return isSameName(first, second) ? 1 : 0;
}
