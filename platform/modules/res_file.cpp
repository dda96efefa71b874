// The .res form: a header of sizes, type, name and language, the bytes, and padding to four.
//
// The form is documented with the record RESOURCEHEADER of the Windows resource formats.
#include "modules/res_file.h"

#include <algorithm>

#include "winerror.h"

namespace machine {

namespace {

std::uint64_t padded(std::uint64_t offset) {
    return (offset + 3) & ~std::uint64_t{3};
}

// A type or a name as it lies in a header: 0xFFFF and a number, or a text with its 0.
struct StoredName {
    std::optional<WORD> id;
    std::u16string text;
    std::uint64_t end = 0;  // where it ends in the file

    bool is(const ResourceName& name) const { return id ? name.isId(*id) : name.isText(text); }
};

std::optional<StoredName> readName(const CheckedBytes& bytes, std::uint64_t offset) {
    constexpr WORD numberFollows = 0xFFFF;
    StoredName name;
    if (bytes.word(offset) == numberFollows) {
        name.id = bytes.word(offset + 2);
        name.end = offset + 4;
        return name.id ? std::optional(name) : std::nullopt;
    }
    for (;; offset += 2) {
        const auto character = bytes.word(offset);
        if (!character) return std::nullopt;
        if (*character == 0) break;
        name.text.push_back(*character);
    }
    name.end = offset + 2;
    return name;
}

struct Header {
    DWORD dataSize, headerSize;
    StoredName type, name;
    LANGID language;

    std::uint64_t dataOffset(std::uint64_t offset) const { return offset + headerSize; }
    std::uint64_t next(std::uint64_t offset) const { return padded(dataOffset(offset) + dataSize); }
};

// Nothing: no whole resource begins there.
std::optional<Header> readHeader(const CheckedBytes& bytes, std::uint64_t offset) {
    const auto dataSize = bytes.dword(offset), headerSize = bytes.dword(offset + 4);
    if (!dataSize || !headerSize || !bytes.holds(offset, std::uint64_t{*headerSize} + *dataSize)) {
        return std::nullopt;
    }
    const auto header = bytes.part(0, offset + *headerSize);
    const auto type = readName(header, offset + 8);
    const auto name = type ? readName(header, type->end) : std::nullopt;
    if (!name) return std::nullopt;
    // Before the language lie the version of the data and the flags.
    const auto language = header.word(padded(name->end) + 6);
    if (!language) return std::nullopt;
    return Header{*dataSize, *headerSize, *type, *name, *language};
}

}  // namespace

FoundResource ResFile::find(const ResourceName& type, const ResourceName& name,
                            LANGID language) const {
    DWORD error = ERROR_RESOURCE_DATA_NOT_FOUND;
    LanguageChoice choice(language);
    std::uint64_t offset = 0;
    while (const auto header = readHeader(bytes_, offset)) {
        const bool isMarker = header->type.is(ResourceName(WORD{0}));  // begins every file
        const bool isType = header->type.is(type), isName = isType && header->name.is(name);
        if (isName) choice.offer(header->language, bytes_.address(offset));
        const DWORD nearest = isName     ? ERROR_RESOURCE_LANG_NOT_FOUND
                              : isType   ? ERROR_RESOURCE_NAME_NOT_FOUND
                              : isMarker ? ERROR_RESOURCE_DATA_NOT_FOUND
                                         : ERROR_RESOURCE_TYPE_NOT_FOUND;
        error = std::max(error, nearest);  // the codes grow with what was found
        offset = header->next(offset);
    }
    return choice.best() != nullptr ? FoundResource{choice.best(), 0}
                                    : FoundResource{nullptr, error};
}

std::optional<CheckedBytes> ResFile::bytes(const void* record) const {
    const auto offset = bytes_.offsetOf(record);
    const auto header = offset ? readHeader(bytes_, *offset) : std::nullopt;
    if (!header) return std::nullopt;
    return bytes_.part(header->dataOffset(*offset), header->dataSize);
}

}  // namespace machine
