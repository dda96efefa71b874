// The host's error numbers as system error codes.
#pragma once

#include "windef.h"

namespace machine {

DWORD codeOfHostError(int error);

// Sets the last error and gives the value back: `return failWith(code, FALSE);`
template <class Result>
Result failWith(DWORD code, Result failure);

}  // namespace machine

#include "errhandlingapi.h"

template <class Result>
Result machine::failWith(DWORD code, Result failure) {
    SetLastError(code);
    return failure;
}
