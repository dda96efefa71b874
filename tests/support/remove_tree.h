// Removes a folder with all that is in it, through the platform's own calls.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace remove_tree_detail {

using WideText = std::vector<wchar_t>;

inline WideText joined(WideText folder, const wchar_t* name) {
    if (!folder.empty()) folder.back() = '\\';
    for (; *name != 0; ++name) folder.push_back(*name);
    folder.push_back(0);
    return folder;
}

inline bool isDots(const wchar_t* name) {
    return name[0] == '.' && (name[1] == 0 || (name[1] == '.' && name[2] == 0));
}

inline void remove(const WideText& folder);

inline void removeEntry(const WideText& folder, const WIN32_FIND_DATAW& entry) {
    if (isDots(entry.cFileName)) return;
    const auto path = joined(folder, entry.cFileName);
    SetFileAttributesW(path.data(), FILE_ATTRIBUTE_NORMAL);
    if ((entry.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
        RemoveDirectoryW(path.data());  // and nothing of its target
    } else if ((entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
        remove(path);
    } else {
        DeleteFileW(path.data());
    }
}

inline void remove(const WideText& folder) {
    if (RemoveDirectoryW(folder.data())) return;  // empty, or a link
    const wchar_t all[] = {'*', 0};
    WIN32_FIND_DATAW entry;
    const HANDLE search = FindFirstFileW(joined(folder, all).data(), &entry);
    if (search != INVALID_HANDLE_VALUE) {
        do removeEntry(folder, entry);
        while (FindNextFileW(search, &entry));
        FindClose(search);
    }
    RemoveDirectoryW(folder.data());
}

}  // namespace remove_tree_detail

inline void removeTree(const std::string& folder) {
    std::vector<wchar_t> wide(folder.size() + 1);
    MultiByteToWideChar(CP_ACP, 0, folder.c_str(), -1, wide.data(), static_cast<int>(wide.size()));
    remove_tree_detail::remove(wide);
}
