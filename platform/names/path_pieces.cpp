// The pieces of a path's text, and its full form.
#include "names/path_pieces.h"

#include <algorithm>
#include <array>

#include "names/paths.h"
#include "text/case_mapping.h"

namespace machine {

namespace {

constexpr std::size_t usualDepth = 8;

bool isLetter(char16_t character) {
    const char16_t upper = upperCase(character);
    return upper >= u'A' && upper <= u'Z';
}

bool endsDevice(char16_t character) {
    return character == u'.' || character == u':';
}

std::u16string_view withoutTrailing(std::u16string_view name, std::u16string_view characters) {
    const auto last = name.find_last_not_of(characters);
    return name.substr(0, last == std::u16string_view::npos ? 0 : last + 1);
}

// Within a path, a name loses a single dot at its end; two dots and more are part of the name.
std::u16string_view withoutDot(std::u16string_view name) {
    const bool isSingle = name.ends_with(u'.') && !name.ends_with(u"..");
    return isSingle ? name.substr(0, name.size() - 1) : name;
}

// Takes a part and the separators in front of it off the text.
std::u16string takePart(std::u16string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(u"\\/"), text.size()));
    const std::u16string part(text.substr(0, text.find_first_of(u"\\/")));
    text.remove_prefix(part.size());
    return part;
}

std::u16string joined(std::u16string root, const Components& components, bool trailingSeparator) {
    for (const auto& component : components) {
        if (!root.ends_with(u'\\')) root += u'\\';
        root += component;
    }
    const bool bareDrive = root.size() == 2 && root[1] == u':';
    if ((trailingSeparator || bareDrive) && !root.ends_with(u'\\')) root += u'\\';
    return root;
}

// "\\server\share" or what there is of it.
std::u16string shareRoot(std::u16string_view& rest) {
    const bool isServerAlone = rest.find_first_of(u"\\/") == rest.npos;
    const auto [server, name] = takeShare(rest);
    const auto root = u"\\\\" + server;
    return isServerAlone ? root : root + u"\\" + name;
}

// Takes the root off the text; relative paths begin with the current directory's components. Empty:
// there is no current directory, or it lies on no drive.
std::u16string takeRoot(std::u16string_view& text, Components& components) {
    if (text.starts_with(u"\\\\?\\") || text.starts_with(u"\\\\.\\")) {
        auto root = std::u16string(text.substr(0, 4));
        text.remove_prefix(4);
        if (!beginsWithDrive(text)) return root;
        root += text.substr(0, 2);
        text.remove_prefix(2);
        return root;
    }
    if (text.size() > 1 && isSeparator(text[0]) && isSeparator(text[1])) {
        text.remove_prefix(2);
        return shareRoot(text);
    }
    std::u16string drive;
    if (beginsWithDrive(text)) {
        drive = text.substr(0, 2);
        text.remove_prefix(2);
    }
    const bool rooted = !text.empty() && isSeparator(text[0]);
    if (rooted && !drive.empty()) return drive;
    const auto here = currentDirectory();
    if (here.error != 0) return {};
    const auto root = here.rootText();
    const bool onCurrent = drive.empty() || equalIgnoringCase(root, drive);
    if (!rooted && onCurrent) components = here.components;
    return drive.empty() ? root : drive;
}

}  // namespace

bool isSeparator(char16_t character) {
    return character == u'\\' || character == u'/';
}

bool beginsWithDrive(std::u16string_view text) {
    return text.size() > 1 && isLetter(text[0]) && text[1] == u':';
}

ShareParts takeShare(std::u16string_view& text) {
    ShareParts parts;
    parts.server = takePart(text);
    parts.name = takePart(text);
    auto& last = parts.name.empty() ? parts.server : parts.name;
    if (text.empty()) last = withoutTrailing(last, u". ");
    return parts;
}

bool addComponents(Components& components, std::u16string_view text) {
    components.reserve(components.size() + usualDepth);
    const bool asFolder = !text.empty() && isSeparator(text.back());
    auto former = components.size();  // how many of those in front are left
    while (!text.empty()) {
        const auto end = std::find_if(text.begin(), text.end(), isSeparator);
        const std::u16string_view name(text.begin(), end);
        text.remove_prefix(std::min(name.size() + 1, text.size()));
        if (name == u"..") {
            if (!components.empty()) components.pop_back();
            former = std::min(former, components.size());
            continue;
        }
        const auto kept = withoutDot(name);
        if (!kept.empty()) components.emplace_back(kept);
    }
    if (asFolder || components.size() == former) return asFolder;
    components.back().resize(withoutTrailing(components.back(), u". ").size());
    if (!components.back().empty()) return false;
    components.pop_back();
    return true;
}

void addVerbatim(Components& components, std::u16string_view text) {
    while (!text.empty()) {
        const auto end = std::min(text.find(u'\\'), text.size());
        if (end > 0) components.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
}

std::u16string deviceOf(std::u16string_view component) {
    constexpr std::array names = {u"CON", u"PRN", u"AUX", u"NUL"};
    if (component.size() < 3) return {};
    const auto end = std::find_if(component.begin(), component.end(), endsDevice);
    const auto base = withoutTrailing({component.begin(), end}, u" ");
    if (base.size() != 3 && base.size() != 4) return {};
    const auto upper = upperCase(std::u16string(base));
    const bool numbered = upper.size() == 4 && upper[3] >= u'1' && upper[3] <= u'9' &&
                          (upper.starts_with(u"COM") || upper.starts_with(u"LPT"));
    const bool device = numbered || std::find(names.begin(), names.end(), upper) != names.end();
    return std::u16string(device ? base : std::u16string_view());
}

bool isNullDevice(std::u16string_view component) {
    return upperCase(deviceOf(component)) == u"NUL";
}

std::u16string fullPathOf(std::u16string_view text) {
    if (text.empty() || text.size() > longestPath) return {};
    const bool endsInSeparator = isSeparator(text.back());
    const bool verbatim = text.starts_with(u"\\\\?\\") || text.starts_with(u"\\\\.\\");
    Components components;
    const auto root = takeRoot(text, components);
    if (root.empty()) return {};
    const bool asFolder = addComponents(components, text) || endsInSeparator;
    const auto device = verbatim || components.empty() || root.starts_with(u"\\\\")
                            ? std::u16string()
                            : deviceOf(components.back());
    return device.empty() ? joined(root, components, asFolder) : u"\\\\.\\" + device;
}

}  // namespace machine
