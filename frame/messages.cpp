// Message lookups in the system's table and in the network message module.
#include "frame/messages.h"

#include "frame/owner.h"

namespace {

constexpr DWORD userDefaultLanguage = 0x400;  // LANG_USER_DEFAULT
constexpr DWORD firstNetworkMessage = 2100;
constexpr DWORD lastNetworkMessage = 2999;

// Inserts are not ignored: a text that asks for arguments counts as not found.
DWORD format(HMODULE module, DWORD code, char* text, DWORD size) {
    const DWORD flags =
        FORMAT_MESSAGE_FROM_SYSTEM | (module != nullptr ? FORMAT_MESSAGE_FROM_HMODULE : 0);
    return FormatMessageA(flags, module, code, userDefaultLanguage, text, size, nullptr);
}

}  // namespace

DWORD Jw32SystemMessage(DWORD code, char* text, DWORD size) {
    const bool network = code >= firstNetworkMessage && code <= lastNetworkMessage;
    const UniqueModule messages(
        network ? LoadLibraryExA("netmsg.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE) : nullptr);
    return format(messages.get(), code, text, size);
}

void Jw32ComMessage(WORD code, char* text, DWORD size) {
    format(nullptr, code, text, size);
}
