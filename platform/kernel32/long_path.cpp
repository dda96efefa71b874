// Long forms of paths.
#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "fileapi.h"
#include "machine/ansi.h"
#include "machine/deliver.h"
#include "machine/host_errors.h"
#include "machine/lookup.h"
#include "machine/script.h"

namespace {

using machine::failWith;

bool isSeparator(char16_t character) {
    return character == u'\\' || character == u'/';
}

machine::Path parse(std::u16string_view text) {
    std::vector<wchar_t> wide(text.begin(), text.end());
    wide.push_back(0);
    return machine::parsePath(wide.data());
}

// The name that the host has for the last component of a path, where it is not the one given.
std::u16string longName(std::u16string_view path, const std::u16string& component) {
    const auto parsed = parse(path);
    const bool isName = parsed.fileError() == 0 && !parsed.isRoot() &&
                        machine::equalIgnoringCase(parsed.components.back(), component);
    if (!isName) return component;  // "C:", ".", "..", a server or a share
    const auto host = machine::findOnHost(parsed).path;
    const auto name = machine::fromUtf8(host.substr(host.rfind('/') + 1));
    return machine::equalIgnoringCase(name, component) ? component : name;
}

// Everything but short names stays as it is given.
std::u16string longForm(std::u16string_view path) {
    std::u16string result;
    for (std::size_t at = 0; at < path.size();) {
        const auto end = static_cast<std::size_t>(
            std::find_if(path.begin() + static_cast<std::ptrdiff_t>(at), path.end(), isSeparator) -
            path.begin());
        const std::u16string component(path.substr(at, end - at));
        if (!component.empty()) result += longName(path.substr(0, end), component);
        if (end < path.size()) result += path[end];
        at = end + 1;
    }
    return result;
}

}  // namespace

DWORD WINAPI GetLongPathNameA(LPCSTR name, LPSTR buffer, DWORD size) {
    if (const auto scripted = machine::call("GetLongPathNameA", name, size)) {
        return scripted.or_(DWORD{0});
    }
    const auto path = machine::parsePath(machine::WideArgument(name));
    if (const DWORD code = path.fileError()) return failWith(code, DWORD{0});
    const auto found = machine::findOnHost(path);
    if (!found.exists()) return failWith(found.error, DWORD{0});
    return machine::deliver(machine::toAnsi(longForm(machine::fromAnsi(name))), buffer, size);
}
