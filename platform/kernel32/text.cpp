// Text: lengths, comparisons, and conversions between code pages and wide text.
#include <algorithm>
#include <cstring>

#include "core/ansi.h"
#include "core/machine.h"
#include "core/script.h"
#include "errhandlingapi.h"
#include "host/host_errors.h"
#include "stringapiset.h"
#include "text/case_mapping.h"
#include "text/code_page.h"
#include "winerror.h"
#include "winnls.h"

namespace {

std::u16string decoded(LPCSTR text, int length, bool ignoreCase) {
    const auto bytes = length < 0 ? std::strlen(text) : static_cast<std::size_t>(length);
    const auto wide = machine::fromAnsi({text, bytes});
    return ignoreCase ? machine::upperCase(wide) : wide;
}

UINT resolved(UINT codePage) {
    return codePage == CP_ACP || codePage == CP_THREAD_ACP ? machine::current().codePage : codePage;
}

int refuse(DWORD code) {
    SetLastError(code);
    return 0;
}

template <class Source, class Target>
bool argumentsAreValid(const Source* source, int sourceLength, const Target* target, int targetSize,
                       UINT codePage) {
    return source != nullptr && sourceLength != 0 && targetSize >= 0 &&
           (targetSize == 0 || target != nullptr) && machine::isCodePage(codePage);
}

template <class Source>
std::size_t lengthWithTerminator(const Source* source) {
    const Source* end = source;
    while (*end != 0) ++end;
    return static_cast<std::size_t>(end - source) + 1;
}

template <class Source>
bool isAscii(const Source* source, std::size_t length) {
    return std::all_of(source, source + length,
                       [](Source unit) { return unit >= 0 && unit < 0x80; });
}

// Copies the converted text, or tells its length when no room is given.
template <class Text, class Target>
int deliver(const Text& text, std::size_t length, Target* target, int targetSize) {
    if (targetSize == 0) return static_cast<int>(length);
    if (length > static_cast<std::size_t>(targetSize)) return refuse(ERROR_INSUFFICIENT_BUFFER);
    std::transform(text, text + length, target,
                   [](auto unit) { return static_cast<Target>(unit); });
    return static_cast<int>(length);
}

}  // namespace

int WINAPI lstrlenA(LPCSTR text) {
    return text == nullptr ? 0 : static_cast<int>(std::strlen(text));
}

int WINAPI lstrlenW(LPCWSTR text) {
    int length = 0;
    while (text != nullptr && text[length] != 0) ++length;
    return length;
}

int WINAPI CompareStringA(LCID locale, DWORD flags, LPCSTR left, int leftLength, LPCSTR right,
                          int rightLength) try {
    if (const auto scripted =
            machine::call<&CompareStringA>(locale, flags, left, leftLength, right, rightLength)) {
        return scripted.valueOr(0);
    }
    if (left == nullptr || right == nullptr) {
        SetLastError(ERROR_INVALID_PARAMETER);
        return 0;
    }
    const bool ignoreCase = (flags & NORM_IGNORECASE) != 0;
    const auto order =
        decoded(left, leftLength, ignoreCase).compare(decoded(right, rightLength, ignoreCase));
    return order < 0 ? CSTR_LESS_THAN : order == 0 ? CSTR_EQUAL : CSTR_GREATER_THAN;
} catch (const std::exception&) {
    return machine::outOfMemory(0);
}

UINT WINAPI GetACP() {
    return machine::current().codePage;
}

int WINAPI MultiByteToWideChar(UINT codePage, DWORD flags, LPCSTR source, int sourceLength,
                               LPWSTR target, int targetSize) try {
    if (const auto scripted = machine::call<&MultiByteToWideChar>(
            codePage, flags, source, sourceLength, target, targetSize)) {
        return scripted.valueOr(0);
    }
    const UINT page = resolved(codePage);
    if (!argumentsAreValid(source, sourceLength, target, targetSize, page)) {
        return refuse(ERROR_INVALID_PARAMETER);
    }
    const auto length =
        sourceLength < 0 ? lengthWithTerminator(source) : static_cast<std::size_t>(sourceLength);
    if (isAscii(source, length)) return deliver(source, length, target, targetSize);
    const auto text = machine::decode(page, {source, length});
    return deliver(text.data(), text.size(), target, targetSize);
} catch (const std::exception&) {
    return machine::outOfMemory(0);
}

int WINAPI WideCharToMultiByte(UINT codePage, DWORD flags, LPCWSTR source, int sourceLength,
                               LPSTR target, int targetSize, LPCSTR defaultCharacter,
                               LPBOOL usedDefault) try {
    if (const auto scripted =
            machine::call<&WideCharToMultiByte>(codePage, flags, source, sourceLength, target,
                                                targetSize, defaultCharacter, usedDefault)) {
        return scripted.valueOr(0);
    }
    const UINT page = resolved(codePage);
    // UTF-8 has every character, and a call that asks for substitutes is a mistake.
    const bool asksForSubstitute = defaultCharacter != nullptr || usedDefault != nullptr;
    if (!argumentsAreValid(source, sourceLength, target, targetSize, page) ||
        (page == CP_UTF8 && asksForSubstitute)) {
        return refuse(ERROR_INVALID_PARAMETER);
    }
    const auto length =
        sourceLength < 0 ? lengthWithTerminator(source) : static_cast<std::size_t>(sourceLength);
    if (usedDefault != nullptr) *usedDefault = FALSE;
    if (isAscii(source, length)) return deliver(source, length, target, targetSize);
    const auto encoded = machine::encode(page, std::u16string(source, source + length),
                                         defaultCharacter == nullptr ? "?" : defaultCharacter);
    if (usedDefault != nullptr) *usedDefault = encoded.replaced ? TRUE : FALSE;
    return deliver(encoded.text.data(), encoded.text.size(), target, targetSize);
} catch (const std::exception&) {
    return machine::outOfMemory(0);
}
