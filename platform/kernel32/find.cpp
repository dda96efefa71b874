// Searches for files.
#include "core/ansi.h"
#include "core/handles.h"
#include "core/script.h"
#include "fileapi.h"
#include "files/search.h"
#include "host/host_errors.h"
#include "text/utf16.h"
#include "winerror.h"

namespace {

using machine::failWith;

template <std::size_t Size>
void storeAnsi(CHAR (&target)[Size], const WCHAR* text) {
    const auto ansi = machine::toAnsi(machine::fromWide(text));
    const auto length = ansi.copy(target, Size - 1);
    target[length] = '\0';
}

BOOL findNext(HANDLE handle, WIN32_FIND_DATAW& record) {
    const machine::Pinned<machine::SearchObject> search(handle, machine::searches());
    if (!search) return failWith(ERROR_INVALID_HANDLE, FALSE);
    return search->next(record) ? TRUE : failWith(ERROR_NO_MORE_FILES, FALSE);
}

}  // namespace

HANDLE WINAPI FindFirstFileW(LPCWSTR name, LPWIN32_FIND_DATAW record) try {
    if (const auto scripted = machine::call<&FindFirstFileW>(name, record)) {
        return scripted.valueOr(INVALID_HANDLE_VALUE);
    }
    const auto path = machine::parsePath(name, machine::Wildcards::InLastComponent);
    const bool endsInDot = machine::fromWide(name).ends_with(u'.');
    auto started = machine::startSearch(path, endsInDot, *record);
    if (started.search == nullptr) return failWith(started.code, INVALID_HANDLE_VALUE);
    const HANDLE handle = machine::searches().insert(std::move(started.search));
    return handle != nullptr ? handle : failWith(ERROR_TOO_MANY_OPEN_FILES, INVALID_HANDLE_VALUE);
} catch (const std::exception&) {
    return machine::outOfMemory(INVALID_HANDLE_VALUE);
}

BOOL WINAPI FindNextFileW(HANDLE search, LPWIN32_FIND_DATAW record) try {
    if (const auto scripted = machine::call<&FindNextFileW>(search, record)) {
        return scripted.valueOr(FALSE);
    }
    return findNext(search, *record);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

BOOL WINAPI FindNextFileA(HANDLE search, LPWIN32_FIND_DATAA record) try {
    if (const auto scripted = machine::call<&FindNextFileA>(search, record)) {
        return scripted.valueOr(FALSE);
    }
    WIN32_FIND_DATAW wide;
    if (!findNext(search, wide)) return FALSE;
    record->dwFileAttributes = wide.dwFileAttributes;
    record->ftCreationTime = wide.ftCreationTime;
    record->ftLastAccessTime = wide.ftLastAccessTime;
    record->ftLastWriteTime = wide.ftLastWriteTime;
    record->nFileSizeHigh = wide.nFileSizeHigh;
    record->nFileSizeLow = wide.nFileSizeLow;
    storeAnsi(record->cFileName, wide.cFileName);
    storeAnsi(record->cAlternateFileName, wide.cAlternateFileName);
    return TRUE;
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}

BOOL WINAPI FindClose(HANDLE handle) try {
    const auto close = [=] { return machine::searches().close(handle); };
    if (const auto scripted = machine::release<&FindClose>(close, handle)) {
        return scripted.valueOr(FALSE);
    }
    return close() ? TRUE : failWith(ERROR_INVALID_HANDLE, FALSE);
} catch (const std::exception&) {
    return machine::outOfMemory(FALSE);
}
