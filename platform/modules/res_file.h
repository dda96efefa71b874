// Resources in the form that a resource compiler writes: one after the other, each after a header.
#pragma once

#include "modules/resources.h"

namespace machine {

// Reads one or several such files in a row. The records that it finds are the headers. Whatever
// follows a broken header is not there.
class ResFile : public Resources {
  public:
    explicit ResFile(std::span<const std::byte> bytes) : bytes_(bytes) {}

    FoundResource find(const ResourceName& type, const ResourceName& name,
                       LANGID language) const override;
    std::optional<CheckedBytes> bytes(const void* record) const override;

  private:
    CheckedBytes bytes_;
};

}  // namespace machine
