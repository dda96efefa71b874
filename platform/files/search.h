// Searches for files.
#pragma once

#include <dirent.h>

#include <memory>
#include <string>

#include "core/handles.h"
#include "minwinbase.h"
#include "names/paths.h"
#include "windef.h"

namespace machine {

// A search with wildcards reads its folder; one for a single name has no folder and ends with it.
struct SearchObject : HandleObject {
    SearchObject() : directory(nullptr, ::closedir) {}

    std::string folder;
    std::u16string pattern;
    bool inRoot = false;  // a root has no "." and ".."
    std::unique_ptr<DIR, int (*)(DIR*)> directory;

    // The next match; false: there are no more.
    bool next(WIN32_FIND_DATAW& record);

  private:
    bool wants(const dirent& entry) const;
};

// The handles that FindClose closes, and CloseHandle does not.
HandleTable& searches();

// Without a search, the code says why. With one, the record holds the first match.
struct StartedSearch {
    std::unique_ptr<SearchObject> search;
    DWORD code;
};

// Starts a search. A dot at the end of the name as it was given counts in patterns only.
StartedSearch startSearch(const Path& path, bool endsInDot, WIN32_FIND_DATAW& record);

}  // namespace machine
