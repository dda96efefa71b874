// What the open handles of a file allow others to do with it.
#include "files/open_handles.h"

#include <fcntl.h>

#include <cerrno>
#include <string>

#include "host/descriptor.h"
#include "host/host_errors.h"
#include "winerror.h"
#include "winnt.h"

namespace machine {

namespace {

// Opened just to ask who has the file open, for which either kind of access does.
Descriptor openToAsk(const std::string& path) {
    constexpr int common = O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    Descriptor file(::open(path.c_str(), O_RDONLY | common));
    if (!file && errno == EACCES) {
        file = Descriptor(::open(path.c_str(), O_WRONLY | common));
    }
    return file;
}

}  // namespace

DWORD objectionOfHandles(const HostName& name, const Sharing& sharing) {
    if (!S_ISREG(name.status.st_mode)) return ERROR_SUCCESS;
    const auto file = openToAsk(name.path);
    if (file) {
        const bool could = couldShare(file.get(), sharing);
        return could ? ERROR_SUCCESS : ERROR_SHARING_VIOLATION;
    }
    const bool lacksRoom = errno == EMFILE || errno == ENFILE || errno == ENOMEM;
    return lacksRoom ? codeOfHostError(errno) : ERROR_SUCCESS;  // else the host decides
}

DWORD objectionToMoving(const HostName& name) {
    constexpr DWORD all = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
    return objectionOfHandles(name, sharingOf(DELETE, all));
}

}  // namespace machine
