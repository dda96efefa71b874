// Text results in the caller's buffer.
#pragma once

#include <windows.h>

/// Copies the text into a buffer of `size` bytes, which is not 0, cut to what fits and terminated.
/// Gives the length of the whole text in bytes, so that a result of `size` or more means a cut.
DWORD storeText(const char* text, char* buffer, DWORD size);
