// A call of an entry point as it was made, for the record of a script.
#pragma once

#include <string>
#include <vector>

namespace machine {

// How the operation reports a failure.
enum class CallKind {
    SetsLastError,
    ReturnsCode,     // LSTATUS, MCIERROR, errno_t
    ReturnsHresult,  // a system code arrives as HRESULT_FROM_WIN32 gives it
    SetsErrno,       // a function of the runtime, which fails for want of memory only
    Releases,        // sets the last error, and what was to be released is released all the same
    CannotFail
};

// Text stands in quotes, wide text as UTF-8; numbers in decimal; blocks of bytes in hexadecimal; a
// null pointer as "null" and any other as "pointer".
struct CallRecord {
    std::string name;
    std::vector<std::string> arguments;
    CallKind kind;

    bool canFail() const { return kind != CallKind::CannotFail; }

    std::string text() const {  // as in: DeleteFileW("C:\a.txt")
        std::string result = name + "(";
        for (std::size_t i = 0; i < arguments.size(); ++i) {
            result += (i == 0 ? "" : ", ") + arguments[i];
        }
        return result + ")";
    }
};

}  // namespace machine
