// Well-known folders of the shell.
#include <windows.h>

#include <shlobj.h>
#include <shlwapi.h>

#include "frame/entry_point.h"
#include "frame/owner.h"
#include "jw32/directories.h"
#include "jw32/folders.h"

namespace {

using FolderCall = decltype(SHGetFolderPathA);

HRESULT currentOrDefault(FolderCall* call, int folder, char* buffer) {
    folder |= CSIDL_FLAG_CREATE;
    const HRESULT result = call(nullptr, folder, nullptr, SHGFP_TYPE_CURRENT, buffer);
    if (SUCCEEDED(result) && result != S_FALSE) return result;
    return call(nullptr, folder, nullptr, SHGFP_TYPE_DEFAULT, buffer);
}

enum class Answer { Found, Refused, NoEntry };

// Asks a module that is loaded for this one question. One that cannot be had refuses.
Answer ask(const char* moduleName, int folder, char* buffer) {
    const UniqueModule module(LoadLibraryA(moduleName));
    if (!module) return Answer::Refused;
    FolderCall* const call = entryPoint<FolderCall>(module.get(), "SHGetFolderPathA");
    if (call == nullptr) return Answer::NoEntry;
    return currentOrDefault(call, folder, buffer) == S_OK ? Answer::Found : Answer::Refused;
}

}  // namespace

int Jw32GetFolderPath(int nFolder, char* pszBuffer, unsigned int uSize) {
    if (uSize < MAX_PATH) return 0;
    auto answer = ask("Shell32.dll", nFolder, pszBuffer);
    if (answer == Answer::NoEntry) answer = ask("SHFolder.dll", nFolder, pszBuffer);
    if (answer != Answer::Found) return 0;
    PathAddBackslashA(pszBuffer);
    Jw32DirectoryCreate(pszBuffer);
    return 1;
}
