// The content of streams: reading, writing and resizing.
#pragma once

#include <array>
#include <span>

#include "compound/mini_space.h"

namespace compound {

/// A stream, with what is known of its chain.
struct Cursor {
    Id id = noElement;
    Chain chain;
    std::uint32_t version = 0;
    bool known = false;
};

/// Bytes to be written; zeros where there is no data.
struct Piece {
    const std::byte* data;
    std::uint64_t size;
};

/// The content of streams. Streams of less than 4,096 bytes lie in the mini stream, all others in
/// sectors of their own.
class Streams {
  public:
    Streams(Medium& medium, Directory& directory, SectorSpace& sectors, MiniSpace& minis,
            std::uint64_t mostBytes)
        : medium_(medium),
          directory_(directory),
          sectors_(sectors),
          minis_(minis),
          mostBytes_(mostBytes) {}

    std::size_t read(Cursor& cursor, std::uint64_t position, std::byte* target, std::size_t size);
    void write(Cursor& cursor, std::uint64_t position, const std::byte* source, std::size_t size);
    void resize(Cursor& cursor, std::uint64_t size);
    /// Frees the chain of a stream that nothing names any more.
    void release(const Element& element);
    /// Writes what was freed.
    void flush();

  private:
    AllocationTable& spaceOf(std::uint64_t size);
    Chain& chainOf(Cursor& cursor);
    void readAt(Chain& chain, std::size_t unit, std::uint64_t offset, std::byte* target,
                std::size_t size);
    void writeAt(Chain& chain, std::size_t unit, std::uint64_t offset, Piece piece);
    void writeAll(Chain& chain, std::size_t unit, std::uint64_t offset,
                  std::span<const Piece> pieces);

    void grow(Cursor& cursor, std::uint64_t size, std::uint64_t position, Piece data);
    void extend(Cursor& cursor, std::uint64_t size, std::array<Piece, 3> added);
    void replace(Cursor& cursor, std::uint64_t size, std::array<Piece, 4> content);
    void shrink(Cursor& cursor, std::uint64_t size);
    void setExtent(Id id, Sector start, std::uint64_t size);

    Medium& medium_;
    Directory& directory_;
    SectorSpace& sectors_;
    MiniSpace& minis_;
    std::uint64_t mostBytes_;
};

}  // namespace compound
