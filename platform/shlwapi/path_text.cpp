// Places in the text of a path.
#include "path_text.h"

#include "core/machine.h"
#include "text/code_page.h"

std::vector<std::size_t> backslashesOf(std::string_view path) {
    const auto codePage = machine::current().codePage;
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < path.size();
         i += machine::firstCharacterLength(codePage, path.substr(i))) {
        if (path[i] == '\\') places.push_back(i);
    }
    return places;
}

std::size_t rootLength(std::string_view path) {
    if (path.substr(0, 2) == "\\\\") {
        const auto places = backslashesOf(path);
        return places.size() > 3 ? places[3] : path.size();
    }
    if (path.substr(0, 1) == "\\") return 1;
    return path.size() > 2 && path[1] == ':' && path[2] == '\\' ? 3 : 0;
}
