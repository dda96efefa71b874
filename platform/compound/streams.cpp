// The content of streams: reading, writing and resizing.
#include "compound/streams.h"

#include <algorithm>
#include <new>
#include <utility>

namespace compound {
namespace {

// Frees what nothing names any more. What cannot be written now is written with the next change or
// at the next commit, which reports the failure.
template <class Step>
void afterwards(const Step& step) {
    try {
        step();
    } catch (const Failure&) {
    } catch (const std::bad_alloc&) {
    }
}

// Takes the first bytes off a row of pieces.
template <std::size_t count>
std::array<Piece, count> takeFront(std::array<Piece, count>& pieces, std::uint64_t size) {
    auto front = pieces;
    for (std::size_t i = 0; i < count; ++i) {
        front[i].size = std::min(size, pieces[i].size);
        size -= front[i].size;
        pieces[i].size -= front[i].size;
        if (pieces[i].data != nullptr) pieces[i].data += front[i].size;
    }
    return front;
}

}  // namespace

AllocationTable& Streams::spaceOf(std::uint64_t size) {
    if (size < miniCutoff) return minis_;
    return sectors_;
}

Chain& Streams::chainOf(Cursor& cursor) {
    const auto& element = directory_[cursor.id];
    if (!cursor.known || cursor.version != element.chainVersion) {
        auto& space = spaceOf(element.size);
        if (ceilDivide(element.size, space.unitSize()) > space.units())
            throw Failure{Error::corrupt};
        cursor.chain = Chain(space, element.start);
        cursor.version = element.chainVersion;
        cursor.known = true;
    }
    return cursor.chain;
}

void Streams::readAt(Chain& chain, std::size_t unit, std::uint64_t offset, std::byte* target,
                     std::size_t size) {
    while (size > 0) {
        const auto within = offset % unit;
        const auto run = chain.run(offset / unit, ceilDivide(within + size, unit));
        const auto bytes =
            static_cast<std::size_t>(std::min<std::uint64_t>(size, run.units * unit - within));
        medium_.read(run.offset + within, target, bytes);
        offset += bytes;
        target += bytes;
        size -= bytes;
    }
}

void Streams::writeAt(Chain& chain, std::size_t unit, std::uint64_t offset, Piece piece) {
    while (piece.size > 0) {
        const auto within = offset % unit;
        const auto run = chain.run(offset / unit, ceilDivide(within + piece.size, unit));
        const auto bytes = std::min<std::uint64_t>(piece.size, run.units * unit - within);
        if (piece.data == nullptr) {
            medium_.writeZeros(run.offset + within, bytes);
        } else {
            medium_.write(run.offset + within, piece.data, static_cast<std::size_t>(bytes));
            piece.data += bytes;
        }
        offset += bytes;
        piece.size -= bytes;
    }
}

// Few bytes are put together first, to be written at once.
void Streams::writeAll(Chain& chain, std::size_t unit, std::uint64_t offset,
                       std::span<const Piece> pieces) {
    std::uint64_t total = 0;
    for (const auto& piece : pieces) total += piece.size;
    std::array<std::byte, 4096> together;
    if (total <= together.size()) {
        auto* end = together.data();
        for (const auto& piece : pieces) {
            if (piece.data != nullptr)
                std::copy_n(piece.data, piece.size, end);
            else
                std::fill_n(end, piece.size, std::byte{0});
            end += piece.size;
        }
        return writeAt(chain, unit, offset, {together.data(), total});
    }
    for (const auto& piece : pieces) {
        writeAt(chain, unit, offset, piece);
        offset += piece.size;
    }
}

std::size_t Streams::read(Cursor& cursor, std::uint64_t position, std::byte* target,
                          std::size_t size) {
    const auto length = directory_[cursor.id].size;
    if (position >= length) return 0;
    size = static_cast<std::size_t>(std::min<std::uint64_t>(size, length - position));
    if (size > 0) readAt(chainOf(cursor), spaceOf(length).unitSize(), position, target, size);
    return size;
}

void Streams::write(Cursor& cursor, std::uint64_t position, const std::byte* source,
                    std::size_t size) {
    if (size == 0) return;
    if (position > mostBytes_ || size > mostBytes_ - position) throw Failure{Error::tooLarge};
    const auto length = directory_[cursor.id].size;
    if (position + size > length) return grow(cursor, position + size, position, {source, size});
    writeAt(chainOf(cursor), spaceOf(length).unitSize(), position, {source, size});
    medium_.order();
}

void Streams::resize(Cursor& cursor, std::uint64_t size) {
    if (size > mostBytes_) throw Failure{Error::tooLarge};
    const auto length = directory_[cursor.id].size;
    if (size > length) grow(cursor, size, size, {nullptr, 0});
    if (size < length) shrink(cursor, size);
}

// The data ends where the stream is to end. Between the old end and the data there are zeros.
void Streams::grow(Cursor& cursor, std::uint64_t size, std::uint64_t position, Piece data) {
    const auto length = directory_[cursor.id].size;
    const auto unit = spaceOf(size).unitSize();
    const Piece gap{nullptr, position > length ? position - length : 0};
    const Piece padding{nullptr, ceilDivide(size, unit) * unit - size};
    if (length > 0 && &spaceOf(length) == &spaceOf(size)) {
        const auto overlap = position < length ? length - position : 0;
        const Piece front{data.data, overlap};
        if (data.data != nullptr) data.data += overlap;
        data.size -= overlap;
        extend(cursor, size, {gap, data, padding});
        if (overlap > 0) writeAt(chainOf(cursor), unit, position, front);
        medium_.order();
        return;
    }
    std::array<std::byte, miniCutoff> old;
    const auto kept = std::min(position, length);
    if (kept > 0) readAt(chainOf(cursor), miniSectorSize, 0, old.data(), kept);
    replace(cursor, size, {Piece{old.data(), kept}, gap, data, padding});
}

// New units are filled and chained before the last unit leads to them, and that before the entry
// counts them.
void Streams::extend(Cursor& cursor, std::uint64_t size, std::array<Piece, 3> added) {
    const auto element = directory_[cursor.id];
    auto& space = spaceOf(size);
    auto& chain = chainOf(cursor);
    const auto unit = space.unitSize();
    const auto units = ceilDivide(element.size, unit);
    const auto last = chain.at(units - 1);
    const auto fresh = space.allocate(ceilDivide(size, unit) - units, {last, units, true});
    try {
        const auto slack = takeFront(added, units * unit - element.size);
        writeAll(chain, unit, element.size, slack);
        if (fresh.first != endOfChain) {
            Chain more(space, fresh.first);
            writeAll(more, unit, 0, added);
            space.append(last, fresh.first);
        }
        medium_.order();
        setExtent(cursor.id, element.start, size);
    } catch (...) {
        space.set(last, endOfChain);
        space.release(fresh.first);
        throw;
    }
    medium_.order();
}

// The whole content goes to new units, the entry switches to them, and the old ones are freed.
void Streams::replace(Cursor& cursor, std::uint64_t size, std::array<Piece, 4> content) {
    const auto old = directory_[cursor.id];
    auto& space = spaceOf(size);
    const auto fresh = space.allocate(ceilDivide(size, space.unitSize()), {.aligned = true});
    try {
        Chain chain(space, fresh.first);
        writeAll(chain, space.unitSize(), 0, content);
        space.flush();
        medium_.order();
        setExtent(cursor.id, fresh.first, size);
    } catch (...) {
        space.release(fresh.first);
        throw;
    }
    directory_.chainChanged(cursor.id);
    medium_.order();
    afterwards([&] {
        release(old);
        flush();
    });
}

void Streams::shrink(Cursor& cursor, std::uint64_t size) {
    const auto old = directory_[cursor.id];
    auto& space = spaceOf(old.size);
    if (size > 0 && &space != &spaceOf(size)) {
        std::array<std::byte, miniCutoff> kept;
        readAt(chainOf(cursor), space.unitSize(), 0, kept.data(), static_cast<std::size_t>(size));
        const auto padding = ceilDivide(size, miniSectorSize) * miniSectorSize - size;
        return replace(cursor, size,
                       {Piece{kept.data(), size}, {nullptr, padding}, {nullptr, 0}, {nullptr, 0}});
    }
    const auto units = ceilDivide(size, space.unitSize());
    const auto last = units == 0 ? endOfChain : chainOf(cursor).at(units - 1);
    setExtent(cursor.id, units == 0 ? endOfChain : old.start, size);
    directory_.chainChanged(cursor.id);
    medium_.order();
    afterwards([&] {
        if (units == 0)
            release(old);
        else
            space.cutAfter(last);
        space.flush();
    });
}

void Streams::setExtent(Id id, Sector start, std::uint64_t size) {
    auto changed = directory_[id];
    changed.start = start;
    changed.size = size;
    directory_.update(id, changed);
}

void Streams::release(const Element& element) {
    if (element.size > 0) spaceOf(element.size).release(element.start);
}

void Streams::flush() {
    minis_.flush();
    sectors_.flush();
}

}  // namespace compound
