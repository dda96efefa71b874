// Questions about the root of a wide path.
#include "core/script.h"
#include "host/host_errors.h"
#include "shlwapi.h"
#include "text/case_mapping.h"
#include "text/utf16.h"

namespace {

// The length of the root with its last backslash: "C:\" or "\\server\share\"; 0: none.
std::size_t completeRootLength(const std::u16string& path) {
    if (path.size() > 2 && path[1] == u':' && path[2] == u'\\') return 3;
    if (path.substr(0, 2) != u"\\\\") return 0;
    const auto server = path.find(u'\\', 2);
    if (server == std::u16string::npos) return 0;
    const auto share = path.find(u'\\', server + 1);
    return share == std::u16string::npos ? 0 : share + 1;
}

}  // namespace

BOOL WINAPI PathIsSameRootW(LPCWSTR left, LPCWSTR right) try {
    if (const auto scripted = machine::call<&PathIsSameRootW>(left, right)) {
        return scripted.valueOr(FALSE);
    }
    const auto first = machine::fromWide(left), second = machine::fromWide(right);
    const auto length = completeRootLength(first);
    const bool same = length > 0 && second.size() >= length &&
                      machine::equalIgnoringCase(first.substr(0, length), second.substr(0, length));
    return same ? TRUE : FALSE;
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

BOOL WINAPI PathIsUNCW(LPCWSTR path) try {
    if (const auto scripted = machine::call<&PathIsUNCW>(path)) return scripted.valueOr(FALSE);
    return machine::fromWide(path).substr(0, 2) == u"\\\\" ? TRUE : FALSE;
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
