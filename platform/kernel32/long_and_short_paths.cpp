// Long and short forms of paths, by the names that the host has.
#include <algorithm>
#include <string>
#include <string_view>

#include "fileapi.h"
#include "machine/ansi.h"
#include "machine/deliver.h"
#include "machine/host_errors.h"
#include "machine/lookup.h"
#include "machine/script.h"
#include "machine/short_names.h"

namespace {

using machine::failWith;

// The host's name of the last component of a path.
std::u16string hostName(const machine::Path& path) {
    const auto host = machine::findOnHost(path).path;
    return machine::fromUtf8(host.substr(host.rfind('/') + 1));
}

// The name that the host has for the last component of a path, where it is not the one given.
std::u16string longName(std::u16string_view path, const std::u16string& component) {
    const auto parsed = machine::parsePath(path);
    const bool isName = parsed.fileError() == 0 && !parsed.isRoot() &&
                        machine::equalIgnoringCase(parsed.components.back(), component);
    if (!isName) return component;  // "C:", ".", "..", a server or a share
    const auto name = hostName(parsed);
    return machine::equalIgnoringCase(name, component) ? component : name;
}

// Everything but short names stays as it is given.
std::u16string longForm(std::u16string_view path) {
    std::u16string result;
    for (std::size_t at = 0; at < path.size();) {
        const auto end = std::min(path.find_first_of(u"\\/", at), path.size());
        const std::u16string component(path.substr(at, end - at));
        if (!component.empty()) result += longName(path.substr(0, end), component);
        if (end < path.size()) result += path[end];
        at = end + 1;
    }
    return result;
}

// The short form of each component as it stands on the host.
std::u16string shortForm(const machine::Path& path) {
    auto result = path;
    auto prefix = path;
    prefix.components.clear();
    for (auto& component : result.components) {
        prefix.components.push_back(component);
        if (!machine::isShortForm(component)) component = machine::shortNameOf(hostName(prefix));
    }
    return result.text() + (path.trailingSeparator ? u"\\" : u"");
}

// The form of the path of something that exists, or the code of its being missing.
template <class Form>
DWORD deliverForm(LPCSTR name, Form form, LPSTR buffer, DWORD size) {
    const auto path = machine::parsePath(machine::WideArgument(name));
    if (const DWORD code = path.fileError()) return failWith(code, DWORD{0});
    const auto found = machine::findOnHost(path);
    if (!found.exists()) return failWith(found.error, DWORD{0});
    return machine::deliver(machine::toAnsi(form(path)), buffer, size);
}

}  // namespace

DWORD WINAPI GetLongPathNameA(LPCSTR name, LPSTR buffer, DWORD size) {
    if (const auto scripted = machine::call("GetLongPathNameA", name, size)) {
        return scripted.or_(DWORD{0});
    }
    const auto form = [&](const machine::Path&) { return longForm(machine::fromAnsi(name)); };
    return deliverForm(name, form, buffer, size);
}

DWORD WINAPI GetShortPathNameA(LPCSTR name, LPSTR buffer, DWORD size) {
    if (const auto scripted = machine::call("GetShortPathNameA", name, size)) {
        return scripted.or_(DWORD{0});
    }
    return deliverForm(name, shortForm, buffer, size);
}
