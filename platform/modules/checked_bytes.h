// Bytes from outside the process, little-endian, of which nothing beyond their end is read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>
#include <type_traits>

namespace machine {

class CheckedBytes {
  public:
    CheckedBytes() = default;
    explicit CheckedBytes(std::span<const std::byte> bytes) : bytes_(bytes) {}

    std::size_t size() const { return bytes_.size(); }
    std::span<const std::byte> span() const { return bytes_; }
    const std::byte* address(std::size_t offset) const { return bytes_.data() + offset; }

    bool holds(std::uint64_t offset, std::uint64_t count) const {
        return offset <= bytes_.size() && count <= bytes_.size() - offset;
    }

    // A number or a record of numbers; nothing: it is not whole.
    template <class Value>
    std::optional<Value> read(std::uint64_t offset) const {
        static_assert(std::is_trivially_copyable_v<Value>);
        if (!holds(offset, sizeof(Value))) return std::nullopt;
        Value value;
        std::memcpy(&value, bytes_.data() + offset, sizeof value);
        return value;
    }
    std::optional<std::uint16_t> word(std::uint64_t offset) const {
        return read<std::uint16_t>(offset);
    }
    std::optional<std::uint32_t> dword(std::uint64_t offset) const {
        return read<std::uint32_t>(offset);
    }

    // A piece of the bytes; empty: it is not whole.
    CheckedBytes part(std::uint64_t offset, std::uint64_t count) const {
        return holds(offset, count) ? CheckedBytes(bytes_.subspan(offset, count)) : CheckedBytes();
    }

    // Where an address lies in the bytes; nothing: outside.
    std::optional<std::size_t> offsetOf(const void* address) const {
        const auto first = reinterpret_cast<std::uintptr_t>(bytes_.data());
        const auto at = reinterpret_cast<std::uintptr_t>(address);
        if (at < first || at - first >= bytes_.size()) return std::nullopt;
        return at - first;
    }

  private:
    std::span<const std::byte> bytes_;
};

}  // namespace machine
