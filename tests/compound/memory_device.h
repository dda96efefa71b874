// A device in memory that can fail, write short, and keep a log for power cuts.
#pragma once

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "compound/device.h"

namespace compound_test {

// What the device holds, and how it is to behave. Tests keep it while a file owns the device.
struct Disk {
    struct Write {
        std::uint64_t offset = 0;
        std::string bytes;    // none: the length becomes `offset`
        bool synced = false;  // a mark: all before it is safe
    };

    std::string bytes;
    int callsToFailure = -1;  // the call after that many fails, and all later ones
    compound::Error failure = compound::Error::io;
    std::size_t longestWrite = SIZE_MAX;
    std::size_t cutBeforeFailure = 0;  // bytes of a block that a failing write still writes
    int calls = 0;
    bool logging = false;
    std::vector<Write> log;

    bool fails() { return ++calls > callsToFailure && callsToFailure >= 0; }
    void apply(const Write& write) {
        if (write.synced) return;
        if (write.bytes.empty()) return bytes.resize(write.offset);
        bytes.resize(std::max<std::size_t>(bytes.size(), write.offset + write.bytes.size()));
        std::memcpy(&bytes[write.offset], write.bytes.data(), write.bytes.size());
    }
    void take(Write write) {
        apply(write);
        if (logging) log.push_back(std::move(write));
    }
};

class MemoryDevice : public compound::Device {
  public:
    explicit MemoryDevice(std::shared_ptr<Disk> disk) : disk_(std::move(disk)) {}

    compound::Result<std::size_t> read(std::uint64_t offset, void* target,
                                       std::size_t size) override {
        if (disk_->fails()) return disk_->failure;
        const auto& bytes = disk_->bytes;
        if (offset >= bytes.size()) return std::size_t{0};
        size = std::min<std::size_t>(size, bytes.size() - offset);
        std::memcpy(target, &bytes[offset], size);
        return size;
    }
    compound::Result<std::size_t> write(std::uint64_t offset, const void* source,
                                        std::size_t size) override {
        const bool fails = disk_->fails();
        if (fails) size = wholeBlocks(offset, size);
        size = std::min(size, disk_->longestWrite);
        if (size > 0) disk_->take({offset, {static_cast<const char*>(source), size}});
        if (fails && size == 0) return disk_->failure;
        return size;
    }
    compound::Error truncate(std::uint64_t size) override {
        if (disk_->fails()) return disk_->failure;
        disk_->take({size, {}});
        return compound::Error::none;
    }
    compound::Error sync() override {
        if (disk_->fails()) return disk_->failure;
        disk_->take({0, {}, true});
        return compound::Error::none;
    }
    compound::Result<std::uint64_t> size() override { return std::uint64_t{disk_->bytes.size()}; }

  private:
    // A write that fails may have written blocks of 4,096 bytes, whole ones only.
    std::size_t wholeBlocks(std::uint64_t offset, std::size_t size) const {
        if (disk_->cutBeforeFailure == 0) return 0;
        const auto toBlock = 4096 - offset % 4096;
        return toBlock < size ? static_cast<std::size_t>(toBlock) : 0;
    }

    std::shared_ptr<Disk> disk_;
};

inline std::unique_ptr<compound::Device> deviceOf(const std::shared_ptr<Disk>& disk) {
    return std::make_unique<MemoryDevice>(disk);
}

}  // namespace compound_test
