// The registry of what callers hold of the machine. Each table of such things adds itself by a
// static object in its own file:
//
//     const machine::CountedTable counted("views", [] { return views().count(); });
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "platform_export.h"

namespace machine {

// The name of each table that is not empty, and its count.
using InUse = std::map<std::string, std::uint64_t>;
PLATFORM_API InUse inUse();

class CountedTable {
  public:
    // The name is a literal. The count may be asked for from any thread.
    CountedTable(const char* name, std::uint64_t (*count)());
    CountedTable(const CountedTable&) = delete;
    CountedTable& operator=(const CountedTable&) = delete;

  private:
    friend InUse inUse();

    const char* const name_;
    std::uint64_t (*const count_)();
    const CountedTable* const next_;
};

}  // namespace machine
