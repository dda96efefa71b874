/// @file
/// The resource handle: the module in which the library looks for its own texts and other resources.
///
/// It is one word of the process, read and written without synchronisation. It is the library's own
/// module when the library is loaded, and again whenever a thread of the process starts or ends, so
/// that another module counts only until then.
///
///     Jw32SetResourceHandle(translatedTexts);  // a module with a string table of its own
#pragma once

#include <windows.h>

#include "jw32/export.h"

/// Sets the module in which the library looks for its string table and its other resources.
///
/// @param hModule the module; stored unchecked, null too
JW32_API void Jw32SetResourceHandle(HINSTANCE hModule);

/// Reports the module in which the library looks for its resources.
///
/// @return the handle that was stored last
JW32_API HINSTANCE Jw32GetResourceHandle();
