// A compound file: storages and streams in one file (MS-CFB, versions 3 and 4).
//
//     auto file = compound::File::create(compound::fileDevice(descriptor, true), {});
//     if (!file) return file.error();
//     const auto notes = (*file)->createStream(compound::File::root, u"Notes");
//     if (!notes) return notes.error();
//     compound::Stream stream(**file, *notes);
//     stream.write(0, "text", 4);
//     return (*file)->close();
#pragma once

#include <string>
#include <vector>

#include "compound/device.h"
#include "compound/elements.h"
#include "compound/medium.h"
#include "compound/names.h"

namespace compound {

/// Names an element for as long as it exists. One that was deleted is told apart from all later ones.
struct ElementId {
    Id index = rootId;
    std::uint32_t generation = 0;
    friend bool operator==(const ElementId&, const ElementId&) = default;
};

using ClassId = std::array<std::byte, 16>;  ///< in the order of the file

/// What is known of an element.
struct Info {
    std::u16string name;
    Kind kind = Kind::none;
    std::uint64_t size = 0;  ///< of a stream, in bytes
    ClassId classId{};
    std::uint32_t stateBits = 0;
    std::uint64_t created = 0, modified = 0;  ///< in units of 100 ns since 1601-01-01, UTC
};

struct Options {
    int version = 3;  ///< of a file that is created: 3 or 4
    bool writable = true;
    Durability durability = Durability::onCommit;
    UpperCase upperCase = simpleUpperCase;
};

/// An open compound file.
///
/// Every change is on the device when the operation returns. A change that fails has left the file as
/// it was, but for bytes of a stream that were overwritten in place. What a process leaves that is
/// killed is a sound file with the old or the new state of the change under way. See
/// docs/storage.md.
///
/// Threads: one at a time. No operation throws.
class File {
  public:
    static constexpr ElementId root{};

    /// Makes a new, empty file on a device, whatever it held. On failure the device is closed.
    static Result<std::unique_ptr<File>> create(std::unique_ptr<Device> device,
                                                const Options& options);
    /// Opens a file. `notCompound`: it is something else; `corrupt`: its parts contradict each other.
    static Result<std::unique_ptr<File>> open(std::unique_ptr<Device> device,
                                              const Options& options);
    /// Closes the file as `close` does.
    ~File();

    int version() const;
    bool exists(ElementId id) const;
    Result<Info> info(ElementId id) const;

    /// The element of that name, case aside, in a storage.
    Result<ElementId> find(ElementId storage, std::u16string_view name) const;
    /// The elements of a storage in the order of their names.
    Result<std::vector<ElementId>> children(ElementId storage) const;
    /// The first element, or the first one whose name comes after `name`, which need not be there;
    /// `notFound` at the end.
    Result<ElementId> following(ElementId storage, std::u16string_view name) const;
    /// The storage that an element is in; `notFound` for the root.
    Result<ElementId> parent(ElementId id) const;

    /// @param time  becomes the time of creation and change, where the format keeps one
    Result<ElementId> createStream(ElementId storage, std::u16string_view name);
    Result<ElementId> createStorage(ElementId storage, std::u16string_view name,
                                    std::uint64_t time = 0);
    /// Removes an element and all below it.
    Error remove(ElementId id);
    Error rename(ElementId id, std::u16string_view name);
    /// Takes an element with all below it to another storage, under a name.
    Error move(ElementId id, ElementId storage, std::u16string_view name);

    Error setClassId(ElementId id, const ClassId& classId);
    /// Sets the bits that are set in `mask`.
    Error setStateBits(ElementId id, std::uint32_t bits, std::uint32_t mask);
    Error setTimes(ElementId id, std::uint64_t created, std::uint64_t modified);

    /// Returns when all changes are safe from a power cut.
    Error commit();
    /// Commits, gives back free space at the end, and takes no further changes.
    Error close();

  private:
    friend class Stream;
    struct Engine;
    explicit File(std::unique_ptr<Engine> engine);

    std::unique_ptr<Engine> engine_;
};

/// A stream of a file. Positions are the caller's. The file must outlive it.
class Stream {
  public:
    Stream(File& file, ElementId id);
    ~Stream();
    Stream(Stream&&) noexcept;
    Stream& operator=(Stream&&) noexcept;

    Result<std::uint64_t> size() const;
    /// Reads up to `size` bytes and returns how many there were.
    Result<std::size_t> read(std::uint64_t position, void* target, std::size_t size);
    /// Writes all or fails. Between the old end and `position` there are zeros afterwards.
    Error write(std::uint64_t position, const void* source, std::size_t size);
    /// Cuts the stream, or makes it longer by zeros.
    Error resize(std::uint64_t size);

  private:
    struct State;
    std::unique_ptr<State> state_;
};

/// Whether bytes from the start of a file are those of a compound file.
bool isCompoundFile(const void* bytes, std::size_t size);

}  // namespace compound
