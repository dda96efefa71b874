// The host's error numbers as system error codes.
#pragma once

#include <exception>

#include "windef.h"

namespace machine {

DWORD codeOfHostError(int error);

// Sets the last error and gives the value back: `return failWith(code, FALSE);`
template <class Result>
Result failWith(DWORD code, Result failure);

// What the last handler of an entry point reports: the one thing that the standard library throws
// here for is a lack of memory.
template <class Result>
Result outOfMemory(Result failure);

}  // namespace machine

#include "errhandlingapi.h"
#include "winerror.h"

template <class Result>
Result machine::failWith(DWORD code, Result failure) {
    SetLastError(code);
    return failure;
}

template <class Result>
Result machine::outOfMemory(Result failure) {
    return failWith(ERROR_NOT_ENOUGH_MEMORY, failure);
}
