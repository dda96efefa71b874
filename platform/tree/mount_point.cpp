// Mount points, as control codes of file systems set them.
#include "tree/mount_point.h"

#include <sys/stat.h>

#include <cstring>
#include <optional>
#include <string>
#include <string_view>

#include "names/lookup.h"
#include "tree/directory_link.h"
#include "winerror.h"
#include "winnt.h"

namespace machine {

namespace {

// The fields in front of the names of REPARSE_DATA_BUFFER, in its mount-point form.
struct Header {
    DWORD tag;
    WORD dataLength, reserved;
    WORD substituteOffset, substituteLength, printOffset, printLength;  // bytes
};
constexpr std::size_t commonSize = 8;  // what the data length does not count

// The name that a sound buffer brings; none otherwise.
std::optional<std::u16string> substituteName(const char* bytes, std::size_t size) {
    Header header{};
    if (size < sizeof header) return std::nullopt;
    std::memcpy(&header, bytes, sizeof header);
    const std::size_t names = size - sizeof header;
    const auto fits = [&](WORD offset, WORD length) {
        return offset % 2 == 0 && length % 2 == 0 && std::size_t{offset} + length <= names;
    };
    const bool sound = header.dataLength + commonSize == size && header.substituteLength > 0 &&
                       fits(header.substituteOffset, header.substituteLength) &&
                       fits(header.printOffset, header.printLength);
    if (!sound) return std::nullopt;
    std::u16string name(header.substituteLength / 2, u'\0');
    std::memcpy(name.data(), bytes + sizeof header + header.substituteOffset,
                header.substituteLength);
    return name;
}

// Where a target lies on the host, existing or not; empty: nowhere.
std::string hostTarget(std::u16string_view name) {
    constexpr std::u16string_view prefix = u"\\??\\";
    if (!name.starts_with(prefix)) return {};
    std::u16string text = u"\\\\?\\";
    text += name.substr(prefix.size());
    const auto path = parsePath(text);
    if (path.fileError() != 0) return {};
    const auto found = findOnHost(path);
    return found.exists() ? found.path : literalHostPath(path);
}

// The path of an open directory, or of a link that was opened itself; empty: it is neither.
std::string directoryPath(int file) {
    struct stat status {};
    if (::fstat(file, &status) != 0) return {};
    if (!S_ISDIR(status.st_mode) && !S_ISLNK(status.st_mode)) return {};
    return presentPath(file);
}

}  // namespace

DWORD setMountPoint(const FileObject& file, const char* bytes, std::size_t size) {
    if (!file.canWrite) return ERROR_ACCESS_DENIED;
    const auto name = substituteName(bytes, size);
    if (!name) return ERROR_INVALID_REPARSE_DATA;
    DWORD tag = 0;
    std::memcpy(&tag, bytes, sizeof tag);
    if (tag != IO_REPARSE_TAG_MOUNT_POINT) return ERROR_NOT_SUPPORTED;
    const auto directory = directoryPath(file.descriptor.get());
    if (directory.empty()) return ERROR_DIRECTORY;
    const auto target = hostTarget(*name);
    return target.empty() ? ERROR_INVALID_REPARSE_DATA : placeDirectoryLink(directory, target);
}

}  // namespace machine
