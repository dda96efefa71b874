// The host's error numbers as system error codes.
#include "host/host_errors.h"

#include <cerrno>

#include "winerror.h"

namespace machine {

namespace {

struct ErrorPair {
    int host;
    DWORD code;
};

constexpr ErrorPair pairs[] = {
    {ENOENT, ERROR_FILE_NOT_FOUND},
    {ENOTDIR, ERROR_PATH_NOT_FOUND},
    {ELOOP, ERROR_PATH_NOT_FOUND},
    {EACCES, ERROR_ACCESS_DENIED},
    {EPERM, ERROR_ACCESS_DENIED},
    {EISDIR, ERROR_ACCESS_DENIED},
    {ETXTBSY, ERROR_ACCESS_DENIED},
    {EROFS, ERROR_WRITE_PROTECT},
    {EBADF, ERROR_ACCESS_DENIED},
    {EEXIST, ERROR_ALREADY_EXISTS},
    {ENOTEMPTY, ERROR_DIR_NOT_EMPTY},
    {ENOSPC, ERROR_DISK_FULL},
    {EDQUOT, ERROR_DISK_FULL},
    {EFBIG, ERROR_DISK_FULL},
    {EMFILE, ERROR_TOO_MANY_OPEN_FILES},
    {ENFILE, ERROR_TOO_MANY_OPEN_FILES},
    {ENOMEM, ERROR_NOT_ENOUGH_MEMORY},
    {EINVAL, ERROR_INVALID_PARAMETER},
    {ENAMETOOLONG, ERROR_INVALID_NAME},
    {EXDEV, ERROR_NOT_SAME_DEVICE},
    {EBUSY, ERROR_SHARING_VIOLATION},
    {EFAULT, ERROR_NOACCESS},
    {EIO, ERROR_IO_DEVICE},
    {ENXIO, ERROR_NOT_READY},
    {ENODEV, ERROR_NOT_READY},
    {EMLINK, ERROR_TOO_MANY_LINKS},
    {ESPIPE, ERROR_INVALID_FUNCTION},
    {EOPNOTSUPP, ERROR_NOT_SUPPORTED},
};

}  // namespace

DWORD codeOfHostError(int error) {
    for (const auto& pair : pairs) {
        if (pair.host == error) return pair.code;
    }
    return ERROR_GEN_FAILURE;
}

}  // namespace machine
