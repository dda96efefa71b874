// Reading from and writing to open files of the host.
#include "files/file_io.h"

#include <unistd.h>

#include <cerrno>

#include "host/host_errors.h"
#include "host/size_limit.h"
#include "winerror.h"

namespace machine {

DWORD readBytes(int file, char* target, DWORD count, DWORD& moved) {
    DWORD done = 0;
    while (done < count) {
        const auto result = ::read(file, target + done, count - done);
        if (result < 0 && errno == EINTR) continue;
        if (result < 0 && done == 0) return codeOfHostError(errno);
        if (result <= 0) break;
        done += static_cast<DWORD>(result);
    }
    moved = done;
    return ERROR_SUCCESS;
}

DWORD writeBytes(int file, const char* source, DWORD count, DWORD& moved) {
    answerSizeLimit();
    DWORD done = 0;
    while (done < count) {
        const ssize_t result = ::write(file, source + done, count - done);
        if (result < 0 && errno == EINTR) continue;
        if (result <= 0) {
            const DWORD code = result < 0 ? codeOfHostError(errno) : ERROR_DISK_FULL;
            if (done == 0 || ::lseek(file, -off_t{done}, SEEK_CUR) >= 0) return code;
            break;
        }
        done += static_cast<DWORD>(result);
    }
    moved = done;
    return ERROR_SUCCESS;
}

}  // namespace machine
