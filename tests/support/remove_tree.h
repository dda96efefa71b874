// Removes a folder with all that is in it, through the platform's own calls.
#pragma once

#include "support/wide.h"

inline void removeTree(const WideText& folder) {
    if (RemoveDirectoryW(folder.data())) return;  // empty, or a link
    const auto below = [&folder](const wchar_t* name) {
        WideText path = folder;
        path.back() = '\\';
        do path.push_back(*name);
        while (*name++ != 0);
        return path;
    };
    const wchar_t all[] = {'*', 0};
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(below(all).data(), &entry);
    for (BOOL more = search != INVALID_HANDLE_VALUE; more; more = FindNextFileW(search, &entry)) {
        const auto path = below(entry.cFileName);
        if (path[path.size() - 2] == '.') continue;  // the folder itself, and the one above
        SetFileAttributesW(path.data(), FILE_ATTRIBUTE_NORMAL);
        if (!DeleteFileW(path.data())) removeTree(path);
    }
    FindClose(search);
    RemoveDirectoryW(folder.data());
}

inline void removeTree(const std::string& folder) {
    removeTree(Wide(folder).text());
}
