// The parts of a path.
#include <string_view>

#include "core/machine.h"
#include "core/script.h"
#include "crtsecure.h"
#include "host/host_errors.h"
#include "text/code_page.h"

namespace {

struct Parts {
    std::string_view drive, directory, name, extension;
};

// Bytes behind the last separator that is a character of its own, and the last dot behind it.
Parts split(std::string_view path) {
    const auto codePage = machine::current().codePage;
    Parts parts;
    if (path.size() > 1 && path[1] == ':') {
        parts.drive = path.substr(0, 2);
        path.remove_prefix(2);
    }
    std::size_t nameStart = 0, dot = std::string_view::npos;
    for (std::size_t i = 0; i < path.size();
         i += machine::firstCharacterLength(codePage, path.substr(i))) {
        if (path[i] == '\\' || path[i] == '/') {
            nameStart = i + 1;
            dot = std::string_view::npos;
        } else if (path[i] == '.') {
            dot = i;
        }
    }
    const auto end = dot == std::string_view::npos ? path.size() : dot;
    parts.directory = path.substr(0, nameStart);
    parts.name = path.substr(nameStart, end - nameStart);
    parts.extension = path.substr(end);
    return parts;
}

struct Target {
    char* text;
    std::size_t size;
    std::string_view part;

    bool isSound() const { return (text == nullptr) == (size == 0); }
    bool fits() const { return text == nullptr || part.size() < size; }
    void store(std::string_view content) const {
        if (text == nullptr) return;
        content.copy(text, content.size());
        text[content.size()] = '\0';
    }
};

}  // namespace

errno_t _splitpath_s(const char* path, char* drive, std::size_t driveSize, char* directory,
                     std::size_t directorySize, char* name, std::size_t nameSize, char* extension,
                     std::size_t extensionSize) try {
    if (const auto scripted =
            machine::callForCode<&_splitpath_s>(path, drive, driveSize, directory, directorySize,
                                                name, nameSize, extension, extensionSize)) {
        return scripted.code();
    }
    if (path == nullptr) return EINVAL;
    const auto parts = split(path);
    const Target targets[] = {{drive, driveSize, parts.drive},
                              {directory, directorySize, parts.directory},
                              {name, nameSize, parts.name},
                              {extension, extensionSize, parts.extension}};
    bool sound = true, fits = true;
    for (const auto& target : targets) {
        sound = sound && target.isSound();
        fits = fits && target.fits();
    }
    if (!sound) return EINVAL;
    for (const auto& target : targets) target.store(fits ? target.part : std::string_view());
    return fits ? 0 : ERANGE;
} catch (const std::exception&) {
    return machine::outOfMemory(EINVAL);
}
