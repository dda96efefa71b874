// The exception that a failed conversion of a name raises.
#pragma once

#include "windef.h"
#include "winerror.h"

class CAtlException {
  public:
    CAtlException() noexcept = default;
    CAtlException(HRESULT result) noexcept : m_hr(result) {}
    operator HRESULT() const noexcept { return m_hr; }

    HRESULT m_hr = E_FAIL;
};

[[noreturn]] inline void AtlThrow(HRESULT result) {
    throw CAtlException(result);
}
