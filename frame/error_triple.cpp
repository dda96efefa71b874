// The steps of the error triple.
#include "frame/error_triple.h"

#include "frame/messages.h"

ErrorTriple::ErrorTriple(DWORD* pdwError, char* pszError, DWORD dwErrorSize)
    : pdwError_(pdwError), pszError_(pszError), dwErrorSize_(dwErrorSize) {
    if (pdwError_ != nullptr) *pdwError_ = 0;
    if (wantsText() && *pszError_ != '\0') *pszError_ = '\0';
}

void ErrorTriple::report(DWORD code) const {
    if (pdwError_ != nullptr) *pdwError_ = code;
    if (wantsText()) Jw32SystemMessage(code, pszError_, dwErrorSize_);
}
