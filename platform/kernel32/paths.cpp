// Forms of paths: full, long and short; the current directory and that of the system.
#include <algorithm>
#include <string>
#include <string_view>

#include "core/ansi.h"
#include "core/machine.h"
#include "core/script.h"
#include "fileapi.h"
#include "host/host_errors.h"
#include "names/lookup.h"
#include "names/path_pieces.h"
#include "names/paths.h"
#include "names/short_names.h"
#include "names/wide_argument.h"
#include "sysinfoapi.h"
#include "text/case_mapping.h"
#include "text/stored_text.h"
#include "text/utf16.h"
#include "winerror.h"

namespace {

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
    const DWORD length = machine::deliver(text, buffer, size);
    if (length >= size || lastPart == nullptr) return length;
    *lastPart = lastPartLength == 0 ? nullptr : buffer + length - lastPartLength;
    return length;
}

// The host's name of the last component of a path; empty where that is no name of a file: "C:", ".",
// "..", a server or a share.
std::u16string hostName(std::u16string_view path, const std::u16string& component) {
    const auto parsed = machine::parsePath(path);
    const bool isName = parsed.fileError() == 0 && !parsed.isRoot() &&
                        machine::equalIgnoringCase(parsed.components.back(), component);
    if (!isName) return {};
    const auto host = machine::findOnHost(parsed).path;
    return machine::shownName(machine::fromUtf8(host.substr(host.rfind('/') + 1)));
}

std::u16string longName(const std::u16string& host, const std::u16string& given) {
    return machine::equalIgnoringCase(host, given) ? given : host;
}

std::u16string shortName(const std::u16string& host, const std::u16string& given) {
    return machine::isShortForm(given) ? given : machine::shortNameOf(host);
}

// The path with each name in another form. Everything but names stays as it is given.
template <class NameForm>
std::u16string formOf(std::u16string_view path, NameForm nameForm) {
    std::u16string result;
    for (std::size_t at = 0; at < path.size();) {
        const auto end = std::min(path.find_first_of(u"\\/", at), path.size());
        const std::u16string component(path.substr(at, end - at));
        const auto host = component.empty() ? component : hostName(path.substr(0, end), component);
        result += host.empty() ? component : nameForm(host, component);
        if (end < path.size()) result += path[end];
        at = end + 1;
    }
    return result;
}

// The form of the path of something that exists, or the code of its being missing.
template <class NameForm>
DWORD deliverForm(LPCSTR name, NameForm nameForm, LPSTR buffer, DWORD size) {
    const auto path = machine::parsePath(machine::WideArgument(name));
    if (const DWORD code = path.fileError()) return failWith(code, DWORD{0});
    const auto found = machine::findOnHost(path);
    if (!found.exists()) return failWith(found.error, DWORD{0});
    return machine::deliver(machine::toAnsi(formOf(machine::fromAnsi(name), nameForm)), buffer,
                            size);
}

}  // namespace

DWORD WINAPI GetFullPathNameW(LPCWSTR name, DWORD size, LPWSTR buffer, LPWSTR* lastPart) try {
    if (const auto scripted = machine::call<&GetFullPathNameW>(name, size, buffer, lastPart)) {
        return scripted.valueOr(0);
    }
    const auto full = machine::fullPathOf(machine::fromWide(name));
    return deliverFull(full, lastPartOf(full).size(), buffer, size, lastPart);
} catch (const std::exception&) {
    return machine::outOfMemory(DWORD{0});
}

DWORD WINAPI GetFullPathNameA(LPCSTR name, DWORD size, LPSTR buffer, LPSTR* lastPart) try {
    if (const auto scripted = machine::call<&GetFullPathNameA>(name, size, buffer, lastPart)) {
        return scripted.valueOr(0);
    }
    const auto full = machine::fullPathOf(machine::fromWide(machine::WideArgument(name)));
    const auto lastPartLength = machine::toAnsi(lastPartOf(full)).size();
    return deliverFull(machine::toAnsi(full), lastPartLength, buffer, size, lastPart);
} catch (const std::exception&) {
    return machine::outOfMemory(DWORD{0});
}

DWORD WINAPI GetCurrentDirectoryA(DWORD size, LPSTR buffer) try {
    if (const auto scripted = machine::call<&GetCurrentDirectoryA>(size, buffer)) {
        return scripted.valueOr(0);
    }
    const auto path = machine::currentDirectory();
    if (const DWORD code = path.fileError()) return failWith(code, DWORD{0});
    return machine::deliver(machine::toAnsi(path.text()), buffer, size);
} catch (const std::exception&) {
    return machine::outOfMemory(DWORD{0});
}

DWORD WINAPI GetLongPathNameA(LPCSTR name, LPSTR buffer, DWORD size) try {
    if (const auto scripted = machine::call<&GetLongPathNameA>(name, buffer, size)) {
        return scripted.valueOr(0);
    }
    return deliverForm(name, longName, buffer, size);
} catch (const std::exception&) {
    return machine::outOfMemory(DWORD{0});
}

DWORD WINAPI GetShortPathNameA(LPCSTR name, LPSTR buffer, DWORD size) try {
    if (const auto scripted = machine::call<&GetShortPathNameA>(name, buffer, size)) {
        return scripted.valueOr(0);
    }
    return deliverForm(name, shortName, buffer, size);
} catch (const std::exception&) {
    return machine::outOfMemory(DWORD{0});
}

UINT WINAPI GetSystemDirectoryA(LPSTR buffer, UINT size) try {
    if (const auto scripted = machine::call<&GetSystemDirectoryA>(buffer, size)) {
        return scripted.valueOr(0);
    }
    const auto directory = machine::current().windowsDirectory + "\\System32";
    return machine::deliver(machine::toAnsi(machine::fromUtf8(directory)), buffer, size);
} catch (const std::exception&) {
    return machine::outOfMemory(UINT{0});
}
