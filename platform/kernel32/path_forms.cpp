// Full forms of paths, and the current directory.
#include <string>

#include "core/ansi.h"
#include "core/script.h"
#include "fileapi.h"
#include "host/host_errors.h"
#include "names/path_pieces.h"
#include "names/paths.h"
#include "names/wide_argument.h"
#include "text/stored_text.h"
#include "text/utf16.h"
#include "winerror.h"

namespace {

using machine::deliver;
using machine::failWith;

// What stands behind the last backslash; nothing behind that of a device.
std::u16string_view lastPartOf(std::u16string_view full) {
    const auto last = full.rfind(u'\\');
    return full.starts_with(u"\\\\.\\") && last == 3 ? std::u16string_view()
                                                     : full.substr(last + 1);
}

// A full path whose last part has that many characters, or the code of there being none.
template <class Text, class Character>
DWORD deliverFull(const Text& text, std::size_t lastPartLength, Character* buffer, DWORD size,
                  Character** lastPart) {
    if (text.empty()) return failWith(ERROR_INVALID_NAME, DWORD{0});
    const DWORD length = deliver(text, buffer, size);
    if (length >= size || lastPart == nullptr) return length;
    *lastPart = lastPartLength == 0 ? nullptr : buffer + length - lastPartLength;
    return length;
}

}  // namespace

DWORD WINAPI GetFullPathNameW(LPCWSTR name, DWORD size, LPWSTR buffer, LPWSTR* lastPart) try {
    if (const auto scripted = machine::call("GetFullPathNameW", name, size)) {
        return scripted.or_(DWORD{0});
    }
    const auto full = machine::fullPathOf(machine::fromWide(name));
    return deliverFull(full, lastPartOf(full).size(), buffer, size, lastPart);
} catch (const std::exception&) {
    return machine::outOfMemory(DWORD{0});
}

DWORD WINAPI GetFullPathNameA(LPCSTR name, DWORD size, LPSTR buffer, LPSTR* lastPart) try {
    if (const auto scripted = machine::call("GetFullPathNameA", name, size)) {
        return scripted.or_(DWORD{0});
    }
    const auto full = machine::fullPathOf(machine::fromWide(machine::WideArgument(name)));
    const auto lastPartLength = machine::toAnsi(lastPartOf(full)).size();
    return deliverFull(machine::toAnsi(full), lastPartLength, buffer, size, lastPart);
} catch (const std::exception&) {
    return machine::outOfMemory(DWORD{0});
}

DWORD WINAPI GetCurrentDirectoryA(DWORD size, LPSTR buffer) try {
    if (const auto scripted = machine::call("GetCurrentDirectoryA", size)) {
        return scripted.or_(DWORD{0});
    }
    const auto path = machine::currentDirectory();
    if (const DWORD code = path.fileError()) return failWith(code, DWORD{0});
    return deliver(machine::toAnsi(path.text()), buffer, size);
} catch (const std::exception&) {
    return machine::outOfMemory(DWORD{0});
}
