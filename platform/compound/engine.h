// The parts of an open file, put together.
#pragma once

#include <new>
#include <stdexcept>

#include "compound/compound_file.h"
#include "compound/reclaim.h"
#include "compound/streams.h"

namespace compound {

/// What a file consists of. Its operations throw `Failure`.
struct File::Engine {
    Engine(Medium opened, const Header& read, const Options& options);

    /// The place of an element; throws `deleted`.
    Id at(ElementId id) const;
    /// The place of a storage; throws `deleted` or `invalidArgument`.
    Id storageAt(ElementId id) const;
    ElementId name(Id id) const { return {id, directory[id].generation}; }
    /// To be called before each change.
    void prepareChange();
    /// Throws when the storage has an element of that name, or could not have one.
    void expectFree(Id storage, std::u16string_view text, Id except = noElement);
    /// Changes properties of an element that no link is among.
    template <class Step>
    void change(Id id, const Step& step) {
        prepareChange();
        auto changed = directory[id];
        step(changed);
        directory.update(id, changed);
    }
    void commit();
    /// Gives back what is free at the end of the file.
    void trim();

    Medium medium;
    Header header;
    SectorSpace sectors;
    Directory directory;
    MiniSpace minis;
    Streams streams;
    bool writable;
    bool checked = false;  // no chains cross
    bool closed = false;
};

/// Runs a step and answers why it failed, if it did.
template <class Step>
Error guardedError(const Step& step) noexcept {
    try {
        step();
        return Error::none;
    } catch (const Failure& failure) {
        return failure.error;
    } catch (const std::bad_alloc&) {
        return Error::noMemory;
    } catch (const std::length_error&) {
        return Error::noMemory;
    }
}

/// Runs a step and answers what it returns, or why it failed.
template <class Step>
auto guarded(const Step& step) -> Result<decltype(step())> {
    decltype(step()) value{};
    const auto error = guardedError([&] { value = step(); });
    if (error != Error::none) return error;
    return value;
}

}  // namespace compound
