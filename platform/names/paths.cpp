// Paths of the interface: made absolute, taken apart, checked.
#include "names/paths.h"

#include <algorithm>
#include <mutex>
#include <numeric>
#include <utility>

#include "host/host_folders.h"
#include "names/path_pieces.h"
#include "names/short_names.h"
#include "text/character_set.h"
#include "text/utf16.h"
#include "winerror.h"

namespace machine {

namespace {

Path invalid(DWORD error) {
    Path path;
    path.error = error;
    return path;
}

bool isValidComponent(const std::u16string& component, bool wildcards) {
    if (component == u"." || component == u"..") return false;  // of a path taken as it stands
    constexpr auto refused = CharacterSet(u"<>:\"|/?*").withControls();
    constexpr auto refusedBesideWildcards = CharacterSet(u"<>:\"|/").withControls();
    const auto& set = wildcards ? refusedBesideWildcards : refused;
    return component.size() <= longestName &&
           std::none_of(component.begin(), component.end(),
                        [&](char16_t character) { return set.holds(character); });
}

// The last checks, on a path whose root and components are known.
Path checked(Path path, Wildcards wildcards) {
    if (path.drive != nullptr && !path.drive->ready) return invalid(ERROR_NOT_READY);
    path.kind = Path::Kind::File;
    if (path.components.empty()) return path;
    const auto& last = path.components.back();
    if (isNullDevice(last)) {
        path.kind = Path::Kind::NullDevice;
        return path;
    }
    if (!deviceOf(last).empty()) return invalid(ERROR_FILE_NOT_FOUND);
    for (const auto& component : path.components) {
        const bool mayBeWild = wildcards == Wildcards::InLastComponent && &component == &last;
        if (!isValidComponent(component, mayBeWild)) return invalid(ERROR_INVALID_NAME);
    }
    return path;
}

// Of the path's text.
std::size_t lengthOf(const Path& path) {
    const auto root = path.drive != nullptr ? std::size_t{2} : path.rootText().size();
    const auto add = [](std::size_t sum, const auto& component) {
        return sum + 1 + component.size();
    };
    return std::max(root + 1,
                    std::accumulate(path.components.begin(), path.components.end(), root, add));
}

bool startsOnDrive(const std::string& host, const std::string& folder) {
    if (folder == "/") return true;
    return host.starts_with(folder) && (host.size() == folder.size() || host[folder.size()] == '/');
}

// The drive whose folder holds the host path most closely; null: none does.
const Drive* driveOfHostPath(const std::string& host) {
    const Drive* best = nullptr;
    for (const auto& drive : current().drives) {
        if (!startsOnDrive(host, drive.folder)) continue;
        if (best == nullptr || best->folder.size() < drive.folder.size()) best = &drive;
    }
    return best;
}

// "\\server\share\rest".
Path sharePath(std::u16string_view text, bool verbatim) {
    if (verbatim && text.find(u'/') != text.npos) return invalid(ERROR_INVALID_NAME);
    const auto [server, name] = takeShare(text);
    if (name.empty()) return invalid(ERROR_INVALID_NAME);
    Path path;
    path.share = current().share(toUtf8(server), toUtf8(name));
    if (path.share == nullptr) return invalid(ERROR_BAD_NETPATH);
    if (verbatim) {
        addVerbatim(path.components, text);
    } else {
        path.trailingSeparator = addComponents(path.components, text);
    }
    return path;
}

// "X:\rest" with the two first characters checked.
Path drivePath(std::u16string_view text, bool verbatim) {
    Path path;
    path.drive = current().drive(static_cast<char>(text[0]));
    if (path.drive == nullptr) return invalid(ERROR_PATH_NOT_FOUND);
    path.letter = text[0];
    const auto rest = text.substr(2);
    if (verbatim) {
        addVerbatim(path.components, rest);
        return path;
    }
    const bool rooted = !rest.empty() && isSeparator(rest[0]);
    if (!rooted) {
        auto here = currentDirectory();
        if (here.error != 0) return here;  // it may have been on this drive
        if (here.drive == path.drive) path.components = std::move(here.components);
    }
    path.trailingSeparator = addComponents(path.components, rest);
    return path;
}

Path absolute(std::u16string_view text) {
    if (beginsWithDrive(text)) return drivePath(text, false);
    if (text.size() > 1 && isSeparator(text[0]) && isSeparator(text[1])) {
        return sharePath(text.substr(2), false);
    }
    auto path = currentDirectory();
    if (path.error != 0) return path;
    if (isSeparator(text[0])) path.components.clear();
    path.trailingSeparator = addComponents(path.components, text);
    return path;
}

Path verbatim(std::u16string_view text) {
    if (text.starts_with(u"UNC\\")) return sharePath(text.substr(4), true);
    if (!beginsWithDrive(text)) return invalid(ERROR_PATH_NOT_FOUND);
    return drivePath(text, true);
}

// The current directory as it was named, and the folder of the host that it was then.
struct NamedDirectory {
    std::u16string text{};
    std::string host{}, hostRoot{};
};
std::mutex namedMutex;
NamedDirectory named;

// The name of the current directory, if that is the host's still; with an error: it is not.
Path namedDirectory(const std::string& host) {
    const std::lock_guard lock(namedMutex);
    if (named.host != host) return invalid(ERROR_PATH_NOT_FOUND);
    const std::u16string_view text = named.text;
    auto path = beginsWithDrive(text) ? drivePath(text, true) : sharePath(text.substr(2), true);
    if (path.error == 0 && path.hostRoot() != named.hostRoot) return invalid(ERROR_PATH_NOT_FOUND);
    path.kind = path.error == 0 ? Path::Kind::File : Path::Kind::Invalid;
    return path;
}

// Behind "\\.\": a drive with its path, or a device.
Path device(std::u16string_view name) {
    if (beginsWithDrive(name) && name.size() > 2) return drivePath(name, false);
    Path path;
    path.kind = isNullDevice(name) ? Path::Kind::NullDevice : Path::Kind::Invalid;
    path.error = path.kind == Path::Kind::NullDevice ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
    return path;
}

}  // namespace

std::u16string Path::rootText() const {
    if (drive != nullptr) {
        return {letter != 0 ? letter : static_cast<char16_t>(drive->letter), u':'};
    }
    return u"\\\\" + fromUtf8(share->server) + u"\\" + fromUtf8(share->name);
}

std::u16string Path::text() const {
    auto result = rootText();
    for (const auto& component : components) result += u"\\" + component;
    return components.empty() ? result + u"\\" : result;
}

DWORD Path::fileError() const {
    return kind == Kind::NullDevice ? ERROR_ACCESS_DENIED : error;
}

std::string Path::hostRoot() const {
    const auto& folder = drive != nullptr ? drive->folder : share->folder;
    return folder == "/" ? std::string() : folder;
}

Path pathOfHost(const std::string& host) {
    Path path;
    path.drive = driveOfHostPath(host);
    if (path.drive == nullptr) return invalid(ERROR_PATH_NOT_FOUND);
    path.kind = Path::Kind::File;
    const auto length = path.drive->folder == "/" ? 0 : path.drive->folder.size();
    const auto rest = fromUtf8(host.substr(length));
    for (std::u16string_view left = rest; !left.empty();) {
        const auto end = std::min(left.find(u'/'), left.size());
        if (end > 0) path.components.push_back(shownName(left.substr(0, end)));
        left.remove_prefix(std::min(end + 1, left.size()));
    }
    return path;
}

Path currentDirectory() {
    const auto host = currentHostFolder();
    if (host.empty()) return invalid(ERROR_PATH_NOT_FOUND);
    auto path = namedDirectory(host);
    return path.error == 0 ? path : pathOfHost(host);
}

void nameCurrentDirectory(const Path& path) {
    NamedDirectory now{path.text(), currentHostFolder(), path.hostRoot()};
    const std::lock_guard lock(namedMutex);
    std::swap(named, now);
}

Path parsePath(const wchar_t* text, Wildcards wildcards) {
    std::size_t length = 0;
    while (text != nullptr && length <= longestPath && text[length] != 0) ++length;
    if (length > longestPath) return invalid(ERROR_FILENAME_EXCED_RANGE);
    return parsePath(std::u16string(text, text + length), wildcards);
}

Path parsePath(std::u16string_view text, Wildcards wildcards) {
    if (text.empty()) return invalid(ERROR_PATH_NOT_FOUND);
    if (text.size() > longestPath) return invalid(ERROR_FILENAME_EXCED_RANGE);
    const bool asItStands = text.starts_with(u"\\\\?\\");
    const bool onDevice = text.starts_with(u"\\\\.\\");
    auto path = asItStands ? verbatim(text.substr(4))
                : onDevice ? device(text.substr(4))
                           : absolute(text);
    if (path.error != 0 || path.kind == Path::Kind::NullDevice) return path;
    const bool endsInSeparator = path.trailingSeparator || isSeparator(text.back());
    path.trailingSeparator = endsInSeparator && !path.components.empty();
    path = checked(std::move(path), wildcards);
    const bool tooLong = !asItStands && path.kind == Path::Kind::File && lengthOf(path) >= MAX_PATH;
    return tooLong ? invalid(ERROR_PATH_NOT_FOUND) : path;
}

}  // namespace machine
