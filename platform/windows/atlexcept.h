// The exception class of the support library that mingw-w64 does not bring.
#pragma once

#include <windows.h>

class CAtlException {
  public:
    CAtlException() noexcept : m_hr(E_FAIL) {}
    CAtlException(HRESULT hr) noexcept : m_hr(hr) {}
    operator HRESULT() const noexcept { return m_hr; }

    HRESULT m_hr;
};
