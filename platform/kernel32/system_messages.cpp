// The texts of the system's error codes, in our own words, sorted by code.
#include "system_messages.h"

#include <algorithm>

#include "synchapi.h"
#include "winerror.h"

namespace {

struct SystemMessage {
    DWORD code;
    std::string_view text;
};

constexpr SystemMessage messages[] = {
    {ERROR_SUCCESS, "Done without an error.\r\n"},
    {ERROR_INVALID_FUNCTION, "The function is not valid here.\r\n"},
    {ERROR_FILE_NOT_FOUND, "There is no such file.\r\n"},
    {ERROR_PATH_NOT_FOUND, "There is no such path.\r\n"},
    {ERROR_TOO_MANY_OPEN_FILES, "Too many files are open.\r\n"},
    {ERROR_ACCESS_DENIED, "Access was denied.\r\n"},
    {ERROR_INVALID_HANDLE, "The handle is not valid.\r\n"},
    {ERROR_NOT_ENOUGH_MEMORY, "There is not enough memory for this operation.\r\n"},
    {ERROR_INVALID_ACCESS, "The kind of access is not valid.\r\n"},
    {ERROR_INVALID_DATA, "The data are not valid.\r\n"},
    {ERROR_OUTOFMEMORY, "Memory has run out.\r\n"},
    {ERROR_INVALID_DRIVE, "There is no such drive.\r\n"},
    {ERROR_CURRENT_DIRECTORY, "The current directory cannot be removed.\r\n"},
    {ERROR_NOT_SAME_DEVICE, "Source and target lie on different drives.\r\n"},
    {ERROR_NO_MORE_FILES, "There are no more files.\r\n"},
    {ERROR_WRITE_PROTECT, "The medium is protected against writing.\r\n"},
    {ERROR_NOT_READY, "The device is not ready.\r\n"},
    {ERROR_SEEK, "The position could not be reached.\r\n"},
    {ERROR_WRITE_FAULT, "Writing to the device failed.\r\n"},
    {ERROR_READ_FAULT, "Reading from the device failed.\r\n"},
    {ERROR_GEN_FAILURE, "The device does not work as it should.\r\n"},
    {ERROR_SHARING_VIOLATION, "Another program has the file open and does not share it.\r\n"},
    {ERROR_LOCK_VIOLATION, "Another program has locked a part of the file.\r\n"},
    {ERROR_HANDLE_EOF, "The end of the file was reached.\r\n"},
    {ERROR_HANDLE_DISK_FULL, "The disk is full.\r\n"},
    {ERROR_NOT_SUPPORTED, "The request is not supported.\r\n"},
    {ERROR_BAD_NETPATH, "The network path was not found.\r\n"},
    {ERROR_BAD_NET_NAME, "The network name was not found.\r\n"},
    {ERROR_FILE_EXISTS, "The file is there already.\r\n"},
    {ERROR_CANNOT_MAKE, "The directory or file cannot be made.\r\n"},
    {ERROR_INVALID_PARAMETER, "A parameter is not valid.\r\n"},
    {ERROR_BROKEN_PIPE, "The other end of the pipe is gone.\r\n"},
    {ERROR_OPEN_FAILED, "The device or file cannot be opened.\r\n"},
    {ERROR_BUFFER_OVERFLOW, "The name is too long.\r\n"},
    {ERROR_DISK_FULL, "There is not enough room on the disk.\r\n"},
    {ERROR_CALL_NOT_IMPLEMENTED, "This system does not have the function.\r\n"},
    {ERROR_INSUFFICIENT_BUFFER, "The buffer is too small.\r\n"},
    {ERROR_INVALID_NAME, "The name of the file, directory or volume is not valid.\r\n"},
    {ERROR_MOD_NOT_FOUND, "The module was not found.\r\n"},
    {ERROR_PROC_NOT_FOUND, "The module does not have the entry point.\r\n"},
    {ERROR_NEGATIVE_SEEK, "The position lies in front of the beginning of the file.\r\n"},
    {ERROR_DIR_NOT_ROOT, "The directory is not the root of a drive.\r\n"},
    {ERROR_DIR_NOT_EMPTY, "The directory is not empty.\r\n"},
    {ERROR_BAD_PATHNAME, "The path is not valid.\r\n"},
    {ERROR_BUSY, "The resource is in use.\r\n"},
    {ERROR_ALREADY_EXISTS, "The name is taken: there is a file or directory of that name.\r\n"},
    {ERROR_FILENAME_EXCED_RANGE, "The file name or its extension is too long.\r\n"},
    {ERROR_FILE_TOO_LARGE, "The file grows beyond the limit for its size.\r\n"},
    {ERROR_MORE_DATA, "There are more data than asked for.\r\n"},
    {WAIT_TIMEOUT, "The time for waiting is over.\r\n"},
    {ERROR_DIRECTORY, "The name is not that of a directory.\r\n"},
    {ERROR_DELETE_PENDING, "The file is about to be deleted.\r\n"},
    {ERROR_MR_MID_NOT_FOUND, "There is no message text for the number.\r\n"},
    {ERROR_INVALID_ADDRESS, "The address is not valid.\r\n"},
    {ERROR_NOACCESS, "The memory cannot be accessed.\r\n"},
    {ERROR_INVALID_FLAGS, "The flags are not valid.\r\n"},
    {ERROR_FILE_INVALID, "The file was changed from outside and its handle is void.\r\n"},
    {ERROR_NO_UNICODE_TRANSLATION, "A character has no counterpart in the code page.\r\n"},
    {ERROR_DLL_INIT_FAILED, "A module refused to start.\r\n"},
    {ERROR_IO_DEVICE, "The device reported an error.\r\n"},
    {ERROR_MAPPED_ALIGNMENT, "The place is not a multiple of the allocation granularity.\r\n"},
    {ERROR_TOO_MANY_LINKS, "The file cannot have more links.\r\n"},
    {ERROR_NOT_FOUND, "The element was not found.\r\n"},
    {ERROR_CANCELLED, "The user cancelled the operation.\r\n"},
    {ERROR_USER_MAPPED_FILE, "A part of the file is mapped into memory.\r\n"},
    {ERROR_COMMITMENT_LIMIT, "The paging file is too small for this operation.\r\n"},
    {ERROR_RESOURCE_DATA_NOT_FOUND, "The module has no resources.\r\n"},
    {ERROR_RESOURCE_TYPE_NOT_FOUND, "The module has no resource of that type.\r\n"},
    {ERROR_RESOURCE_NAME_NOT_FOUND, "The module has no resource of that name.\r\n"},
    {ERROR_RESOURCE_LANG_NOT_FOUND, "The module has the resource in no such language.\r\n"},
};

static_assert(std::is_sorted(std::begin(messages), std::end(messages),
                             [](const auto& left, const auto& right) {
                                 return left.code < right.code;
                             }));

}  // namespace

std::string_view systemMessage(DWORD code) {
    const auto* const found = std::lower_bound(
        std::begin(messages), std::end(messages), code,
        [](const SystemMessage& message, DWORD wanted) { return message.code < wanted; });
    return found != std::end(messages) && found->code == code ? found->text : std::string_view();
}
