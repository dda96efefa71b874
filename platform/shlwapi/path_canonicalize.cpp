// Resolution of "." and ".." in the text of a path.
#include <string>
#include <string_view>
#include <vector>

#include "core/script.h"
#include "errhandlingapi.h"
#include "host/host_errors.h"
#include "path_text.h"
#include "shlwapi.h"
#include "winerror.h"

namespace {

// What no ".." may take away: "C:" with or without its backslash, "\", or the two of a UNC path.
std::size_t fixedLength(std::string_view path) {
    if (path.size() > 1 && path[1] == ':') return path.substr(2, 1) == "\\" ? 3 : 2;
    if (path.substr(0, 2) == "\\\\") return 2;
    return path.substr(0, 1) == "\\" ? 1 : 0;
}

std::vector<std::string_view> segmentsOf(std::string_view text) {
    std::vector<std::string_view> segments;
    std::size_t start = 0;
    for (const auto place : backslashesOf(text)) {
        segments.push_back(text.substr(start, place - start));
        start = place + 1;
    }
    segments.push_back(text.substr(start));
    return segments;
}

// Empty segments stay: a double backslash is no mistake that this function mends.
std::vector<std::string_view> resolved(const std::vector<std::string_view>& segments, bool rooted) {
    std::vector<std::string_view> kept;
    for (const auto segment : segments) {
        if (segment == ".") continue;
        const bool canGoUp = !kept.empty() && kept.back() != "..";
        if (segment != ".." || (!canGoUp && !rooted)) {
            kept.push_back(segment);
        } else if (canGoUp) {
            kept.pop_back();
        }
    }
    return kept;
}

std::string canonical(std::string_view path) {
    if (path.empty()) return "\\";
    const auto fixed = fixedLength(path);
    std::string result(path.substr(0, fixed));
    std::string_view between;
    for (const auto segment : resolved(segmentsOf(path.substr(fixed)), fixed > 0)) {
        result.append(between).append(segment);
        between = "\\";
    }
    const bool bareDrive = result.size() == 2 && result[1] == ':';
    if (bareDrive || result.empty()) result += "\\";
    return result;
}

}  // namespace

BOOL WINAPI PathCanonicalizeA(LPSTR target, LPCSTR path) try {
    if (const auto scripted = machine::call<&PathCanonicalizeA>(target, path)) {
        return scripted.valueOr(FALSE);
    }
    if (target == nullptr || path == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return FALSE;
    }
    const auto result = canonical(path);
    const bool fits = std::string_view(path).size() < MAX_PATH;
    const auto length = fits ? result.copy(target, result.size()) : 0;
    target[length] = '\0';
    if (!fits) SetLastError(ERROR_INSUFFICIENT_BUFFER);
    return fits ? TRUE : FALSE;
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
