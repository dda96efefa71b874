// The steps of the error triple.
#include "frame/error_triple.h"

#include <algorithm>
#include <climits>

#include "frame/messages.h"
#include "jw32/resource_handle.h"

ErrorTriple::ErrorTriple(DWORD* pdwError, char* pszError, DWORD dwErrorSize)
    : pdwError_(pdwError), pszError_(pszError), dwErrorSize_(dwErrorSize) {
    if (pdwError_ != nullptr) *pdwError_ = 0;
    if (wantsText() && *pszError_ != '\0') *pszError_ = '\0';
}

void ErrorTriple::report(DWORD code) const {
    if (pdwError_ != nullptr) *pdwError_ = code;
    if (wantsText()) Jw32SystemMessage(code, pszError_, dwErrorSize_);
}

void ErrorTriple::reportString(DWORD code, UINT stringId) const {
    if (pdwError_ != nullptr) *pdwError_ = code;
    if (!wantsText()) return;
    const auto size = static_cast<int>(std::min<DWORD>(dwErrorSize_, INT_MAX));
    LoadStringA(Jw32GetResourceHandle(), stringId, pszError_, size);
}
