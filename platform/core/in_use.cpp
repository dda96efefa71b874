// The registry of what callers hold of the machine.
#include "core/in_use.h"

#include <utility>

namespace machine {

namespace {
// Registrations run before main, in any order, so the list needs no construction of its own.
constinit const CountedTable* firstTable = nullptr;
}  // namespace

CountedTable::CountedTable(const char* name, std::uint64_t (*count)())
    : name_(name), count_(count), next_(std::exchange(firstTable, this)) {}

InUse inUse() {
    InUse result;
    for (const auto* table = firstTable; table != nullptr; table = table->next_) {
        if (const auto count = table->count_()) result[table->name_] = count;
    }
    return result;
}

}  // namespace machine
