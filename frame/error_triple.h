// The error triple: how an operation tells why it failed.
#pragma once

#include <windows.h>

/// The last three parameters of an operation. Making the object is the entry step: it clears what
/// the caller gave. `fail` is the failure step: `return triple.fail(0);` directly behind the
/// platform call that failed, while everything that the operation holds is still held.
class ErrorTriple {
  public:
    /// Stores 0 in the code, and empties a text that is not empty. A buffer that begins with 0
    /// is not written, and of no buffer more than the first byte.
    ErrorTriple(DWORD* pdwError, char* pszError, DWORD dwErrorSize);

    /// Reports the calling thread's last error and hands back the operation's failure value.
    template <class Result>
    Result fail(Result failure) const {
        return fail(failure, GetLastError());
    }

    /// Reports a code of the operation's own.
    template <class Result>
    Result fail(Result failure, DWORD code) const {
        report(code);
        return failure;
    }

    /// Reports a code of the library's own, with a text from the string table of the module that
    /// the resource handle names.
    template <class Result>
    Result failWithString(Result failure, DWORD code, UINT stringId) const {
        reportString(code, stringId);
        return failure;
    }

  private:
    void report(DWORD code) const;
    void reportString(DWORD code, UINT stringId) const;
    bool wantsText() const { return pszError_ != nullptr && dwErrorSize_ != 0; }

    DWORD* pdwError_;
    char* pszError_;
    DWORD dwErrorSize_;
};
