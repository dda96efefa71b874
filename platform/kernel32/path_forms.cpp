// Full and short forms of paths, and the current directory.
#include <string>

#include "fileapi.h"
#include "machine/ansi.h"
#include "machine/deliver.h"
#include "machine/host_errors.h"
#include "machine/lookup.h"
#include "machine/path_pieces.h"
#include "machine/script.h"
#include "machine/short_names.h"
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

std::u16string fullText(const machine::Path& path) {
    auto text = path.text();
    if (path.trailingSeparator) text += u'\\';
    return text;
}

// The short form of each component as it stands on the host.
std::u16string shortText(const machine::Path& path) {
    auto result = machine::Path(path);
    auto prefix = path;
    prefix.components.clear();
    for (auto& component : result.components) {
        prefix.components.push_back(component);
        const auto found = machine::findOnHost(prefix);
        const auto name = machine::fromUtf8(found.path.substr(found.path.rfind('/') + 1));
        component = machine::isShortForm(component) ? component : machine::shortNameOf(name);
    }
    return fullText(result);
}

}  // namespace

DWORD WINAPI GetFullPathNameW(LPCWSTR name, DWORD size, LPWSTR buffer, LPWSTR* lastPart) {
    if (const auto scripted = machine::call("GetFullPathNameW", name, size)) {
        return scripted.or_(DWORD{0});
    }
    const auto full = machine::fullPathOf(machine::fromWide(name));
    return deliverFull(full, lastPartOf(full).size(), buffer, size, lastPart);
}

DWORD WINAPI GetFullPathNameA(LPCSTR name, DWORD size, LPSTR buffer, LPSTR* lastPart) {
    if (const auto scripted = machine::call("GetFullPathNameA", name, size)) {
        return scripted.or_(DWORD{0});
    }
    const auto full = machine::fullPathOf(machine::fromWide(machine::WideArgument(name)));
    const auto lastPartLength = machine::toAnsi(lastPartOf(full)).size();
    return deliverFull(machine::toAnsi(full), lastPartLength, buffer, size, lastPart);
}

DWORD WINAPI GetShortPathNameA(LPCSTR name, LPSTR buffer, DWORD size) {
    if (const auto scripted = machine::call("GetShortPathNameA", name, size)) {
        return scripted.or_(DWORD{0});
    }
    const auto path = machine::parsePath(machine::WideArgument(name));
    if (const DWORD code = path.fileError()) return failWith(code, DWORD{0});
    const auto found = machine::findOnHost(path);
    if (!found.exists()) return failWith(found.error, DWORD{0});
    return deliver(machine::toAnsi(shortText(path)), buffer, size);
}

DWORD WINAPI GetCurrentDirectoryA(DWORD size, LPSTR buffer) {
    if (const auto scripted = machine::call("GetCurrentDirectoryA", size)) {
        return scripted.or_(DWORD{0});
    }
    const auto path = machine::currentDirectory();
    if (const DWORD code = path.fileError()) return failWith(code, DWORD{0});
    return deliver(machine::toAnsi(path.text()), buffer, size);
}
