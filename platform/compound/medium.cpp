// The device as the engine uses it: whole reads and writes, offsets of sectors, and order.
#include "compound/medium.h"

#include <algorithm>
#include <array>

namespace compound {
namespace {

void check(Error error) {
    if (error != Error::none) throw Failure{error};
}

template <class T>
T valueOf(const Result<T>& result) {
    check(result.error());
    return *result;
}

}  // namespace

Medium::Medium(std::unique_ptr<Device> device, Durability durability)
    : device_(std::move(device)), length_(valueOf(device_->size())), durability_(durability) {}

std::uint64_t Medium::sectors() const {
    return length_ <= sectorSize_ ? 0 : ceilDivide(length_ - sectorSize_, sectorSize_);
}

std::size_t Medium::readSome(std::uint64_t offset, std::byte* target, std::size_t size) {
    std::size_t done = 0;
    while (done < size) {
        const auto got = valueOf(device_->read(offset + done, target + done, size - done));
        if (got == 0) break;
        done += got;
    }
    return done;
}

void Medium::read(std::uint64_t offset, std::byte* target, std::size_t size) {
    if (readSome(offset, target, size) != size) throw Failure{Error::corrupt};
}

void Medium::write(std::uint64_t offset, const std::byte* source, std::size_t size) {
    unsynced_ = true;
    std::size_t done = 0;
    while (done < size) {
        const auto put = valueOf(device_->write(offset + done, source + done, size - done));
        if (put == 0) throw Failure{Error::io};
        done += put;
        length_ = std::max<std::uint64_t>(length_, offset + done);
    }
}

void Medium::writeZeros(std::uint64_t offset, std::uint64_t size) {
    static constexpr std::array<std::byte, 65536> zeros{};
    while (size > 0) {
        const auto piece = static_cast<std::size_t>(std::min<std::uint64_t>(size, zeros.size()));
        write(offset, zeros.data(), piece);
        offset += piece;
        size -= piece;
    }
}

void Medium::truncate(std::uint64_t size) {
    unsynced_ = true;
    check(device_->truncate(size));
    length_ = size;
}

void Medium::sync() {
    if (!unsynced_ || durability_ == Durability::never) return;
    check(device_->sync());
    unsynced_ = false;
}

void Medium::order() {
    if (durability_ == Durability::always) sync();
}

}  // namespace compound
