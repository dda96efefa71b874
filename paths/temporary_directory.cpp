// The search for the temporary directory.
#include <windows.h>

#include <shlwapi.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "frame/entry_point.h"
#include "frame/multibyte.h"
#include "frame/owner.h"
#include "jw32/directories.h"
#include "jw32/temporary_files.h"
#include "paths/text_result.h"

namespace {

// Bytes, terminator included: of the directory's long form, and of an assignment to a variable.
constexpr DWORD longFormRoom = 521;
constexpr std::size_t assignmentRoom = 521;
constexpr std::size_t systemRoom = MAX_PATH + 1;

constexpr char ownName[] = "~Temp";

// A variable's value in a block of its own; null for a variable that is not set.
char* valueOf(const char* variable) {
    char* value = nullptr;
    std::size_t length = 0;
    const bool read = _dupenv_s(&value, &length, variable) == 0;
    if (read && value != nullptr && length != 0) return value;
    std::free(value);
    return nullptr;
}

// A value that is too long is not set at all rather than cut.
void setVariable(const char* variable, const char* value) {
    char assignment[assignmentRoom];
    const int length = std::snprintf(assignment, sizeof assignment, "%s=%s", variable, value);
    if (length < 0 || static_cast<std::size_t>(length) >= sizeof assignment) return;
    _putenv(assignment);
}

// The value of TMP, or that of TEMP, which then becomes the value of TMP too.
char* valueOfEnvironment() {
    if (char* const value = valueOf("TMP")) return value;
    char* const value = valueOf("TEMP");
    if (value != nullptr) setVariable("TMP", value);
    return value;
}

// Stays empty where the module cannot be had. Where there is no long form, or one that does not
// fit, the value stands in for it.
void findLongForm(const char* value, char (&form)[longFormRoom]) {
    const UniqueModule module(LoadLibraryA("Kernel32.dll"));
    if (!module) return;
    auto* const call = entryPoint<decltype(GetLongPathNameA)>(module.get(), "GetLongPathNameA");
    const DWORD length = call != nullptr ? call(value, form, longFormRoom - 1) : 0;
    if (length == 0 || length >= longFormRoom - 1) multibyte::copy(form, value, longFormRoom - 1);
}

// Stores the path of the library's own directory below the system directory. False: there is no
// system directory, or the path does not fit.
bool findOwnDirectory(char (&path)[systemRoom]) {
    const DWORD length = GetSystemDirectoryA(path, MAX_PATH);
    if (length == 0 || path[0] == '\0') return false;
    if (length + sizeof ownName >= systemRoom) return false;
    PathAddBackslashA(path);
    strcat_s(path, sizeof path, ownName);
    return true;
}

DWORD useEnvironment(const char* value, char* buffer, DWORD size) {
    char form[longFormRoom] = "";
    findLongForm(value, form);
    return storeText(form, buffer, size);
}

DWORD useOwnDirectory(char* buffer, DWORD size) {
    char path[systemRoom] = "";
    if (!findOwnDirectory(path)) return 0;
    Jw32DirectoryCreate(path);
    setVariable("TMP", path);
    setVariable("TEMP", path);
    return storeText(path, buffer, size);
}

}  // namespace

DWORD Jw32TempDirectory(char* pszBuffer, DWORD dwSize) {
    if (pszBuffer == nullptr || dwSize == 0) return 0;
    std::memset(pszBuffer, 0, dwSize);
    const UniqueText value(valueOfEnvironment());
    return value ? useEnvironment(value.get(), pszBuffer, dwSize)
                 : useOwnDirectory(pszBuffer, dwSize);
}
