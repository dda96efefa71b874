// The record that an open object shares with its copies.
#include "memory/release_record.h"

#include <windows.h>

#include <new>

std::shared_ptr<ReleaseRecord> makeReleaseRecord() noexcept {
    try {
        return std::make_shared<ReleaseRecord>();
    } catch (const std::bad_alloc&) {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }
}
