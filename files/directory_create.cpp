// Creation of whole paths of directories.
#include <cstring>

#include "frame/error_triple.h"
#include "frame/multibyte.h"
#include "frame/name_conversion.h"
#include "frame/owner.h"
#include "jw32/directories.h"

namespace {

bool isDriveOnly(const char* path) {
    return std::strlen(path) <= 3 && multibyte::find(path, ':') != nullptr;
}

// Ends the text at every backslash behind the given one, so that it shows its first level.
// Gives how many backslashes there were.
int cutIntoLevels(char* firstBackslash) {
    int cuts = 0;
    for (char* at = multibyte::find(firstBackslash + 1, '\\'); at != nullptr;
         at = multibyte::find(at + 1, '\\')) {
        *at = '\0';
        ++cuts;
    }
    return cuts;
}

void showNextLevel(char* path) {
    path[std::strlen(path)] = '\\';
}

// What comes of it is not looked at: the directory stands, with or without the attributes.
void changeAttributes(const char* directory, DWORD add, DWORD remove) {
    const DWORD attributes = GetFileAttributesA(directory);
    SetFileAttributesA(directory, (attributes & ~remove) | add);
}

// Makes one level. False, with the last error set: it was not made, and the name is not taken.
bool createLevel(const char* directory, DWORD add, DWORD remove) {
    if (!CreateDirectoryW(Jw32WideName(directory), nullptr)) {
        return GetLastError() == ERROR_ALREADY_EXISTS;
    }
    if (add != 0 || remove != 0) changeAttributes(directory, add, remove);
    return true;
}

}  // namespace

int Jw32DirectoryCreateAttr(const char* pszPath, DWORD dwAdd, DWORD dwRemove, DWORD* pdwError,
                            char* pszError, DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    if (pszPath == nullptr || std::strlen(pszPath) < 2) return 0;
    if (isDriveOnly(pszPath)) return 1;
    const UniqueText path(_strdup(pszPath));
    if (!path) return triple.fail(0, ERROR_NOT_ENOUGH_MEMORY);
    char* const firstBackslash = multibyte::find(path.get(), '\\');
    if (firstBackslash == nullptr) return 0;
    for (int upper = cutIntoLevels(firstBackslash); upper > 0; --upper) {
        // Servers, shares and the like cannot be made: the last level tells whether it matters.
        createLevel(path.get(), dwAdd, dwRemove);
        showNextLevel(path.get());
    }
    return createLevel(path.get(), dwAdd, dwRemove) ? 1 : triple.fail(0);
}

int Jw32DirectoryCreate(const char* pszPath, DWORD* pdwError, char* pszError, DWORD dwErrorSize) {
    return Jw32DirectoryCreateAttr(pszPath, 0, 0, pdwError, pszError, dwErrorSize);
}
