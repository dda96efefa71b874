// The resources of a module: bytes under a type, a name and a language.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "modules/checked_bytes.h"
#include "windef.h"

namespace machine {

// A type or a name: a number, or a text that is compared without regard to case.
class ResourceName {
  public:
    explicit ResourceName(WORD id) : id_(id) {}
    explicit ResourceName(std::u16string_view text);

    bool isId(WORD id) const { return id_ == id; }
    bool isText(std::u16string_view text) const;

  private:
    std::optional<WORD> id_;
    std::u16string upperCase_;
};

// What a lookup found: the record that describes a resource, an address inside the module.
struct FoundResource {
    const void* record = nullptr;  // null: not there
    DWORD error = 0;               // ERROR_RESOURCE_..._NOT_FOUND says what is missing
};

class Resources {
  public:
    virtual ~Resources() = default;

    // A neutral language (0, or one of the user's or the system's default) stands for: the neutral
    // one, the user's, the user's without its region, and then the first that is there. Any other
    // language is looked for alone.
    virtual FoundResource find(const ResourceName& type, const ResourceName& name,
                               LANGID language) const = 0;

    // The bytes of a record that `find` gave; nothing: it is no record, or its bytes lie outside
    // the module.
    virtual std::optional<CheckedBytes> bytes(const void* record) const = 0;
};

// A module without resources.
class NoResources : public Resources {
  public:
    FoundResource find(const ResourceName& type, const ResourceName& name,
                       LANGID language) const override;
    std::optional<CheckedBytes> bytes(const void* record) const override;
};

// Of the languages of one resource, the one that comes first in the order of a lookup.
class LanguageChoice {
  public:
    explicit LanguageChoice(LANGID wanted);

    void offer(LANGID language, const void* record);
    const void* best() const { return best_; }

  private:
    std::array<LANGID, 3> order_;
    bool anyWillDo_;
    std::size_t bestRank_;
    const void* best_ = nullptr;
};

// A string of the module's string tables; empty: not there, with the reason in `error`.
std::u16string resourceString(const Resources& resources, WORD id, DWORD& error);

// A text of the module's message table; empty: not there.
std::u16string resourceMessage(const Resources& resources, DWORD id, LANGID language);

}  // namespace machine
