// A device over an open file of the host.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "compound/device.h"

namespace compound {
namespace {

Error errorOf(int code) {
    switch (code) {
        case ENOSPC:
        case EDQUOT:
        case EFBIG:
            return Error::full;
        case ENOMEM:
            return Error::noMemory;
        case EBADF:
            return Error::readOnly;
        default:
            return Error::io;
    }
}

// Repeats a call that a signal has interrupted.
template <class Call>
auto uninterrupted(const Call& call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

class FileDevice : public Device {
  public:
    FileDevice(int descriptor, bool owned) : descriptor_(descriptor), owned_(owned) {}
    ~FileDevice() override {
        if (owned_) ::close(descriptor_);
    }
    FileDevice(const FileDevice&) = delete;
    FileDevice& operator=(const FileDevice&) = delete;

    Result<std::size_t> read(std::uint64_t offset, void* target, std::size_t size) override {
        return count(uninterrupted(
            [&] { return ::pread(descriptor_, target, size, static_cast<off_t>(offset)); }));
    }

    Result<std::size_t> write(std::uint64_t offset, const void* source, std::size_t size) override {
        return count(uninterrupted(
            [&] { return ::pwrite(descriptor_, source, size, static_cast<off_t>(offset)); }));
    }

    Error truncate(std::uint64_t size) override {
        return answer(
            uninterrupted([&] { return ::ftruncate(descriptor_, static_cast<off_t>(size)); }));
    }

    Error sync() override {
        return answer(uninterrupted([&] { return ::fdatasync(descriptor_); }));
    }

    Result<std::uint64_t> size() override {
        struct stat status = {};
        if (::fstat(descriptor_, &status) != 0) return errorOf(errno);
        return static_cast<std::uint64_t>(status.st_size);
    }

  private:
    static Result<std::size_t> count(ssize_t result) {
        if (result < 0) return errorOf(errno);
        return static_cast<std::size_t>(result);
    }
    static Error answer(int result) { return result == 0 ? Error::none : errorOf(errno); }

    int descriptor_;
    bool owned_;
};

}  // namespace

std::unique_ptr<Device> fileDevice(int descriptor, bool owned) {
    return std::make_unique<FileDevice>(descriptor, owned);
}

}  // namespace compound
