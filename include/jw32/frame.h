/// @file
/// The resource handle, and what all operations share.
///
/// **Failures.** The result tells first: 0 or null, INVALID_HANDLE_VALUE for a handle, -1 for a
/// size. Operations that can fail for a reason of the platform's end in three parameters, the
/// *error triple*, each of which may be left out without the others:
///
/// - `pdwError` receives the system error code; null: no code is wanted.
/// - `pszError` is the caller's buffer for the system's message text in ANSI; null: no text is
///   wanted. A trailing line end stays in the text. Where the system has no text for the code, or
///   the buffer is too small for it, the code stands alone.
/// - `dwErrorSize` is the capacity of the buffer in bytes, terminator included; 0: no text is
///   wanted, and the buffer is not touched at all.
///
/// Every such operation first clears the triple: the code becomes 0, and of a buffer that holds a
/// text the first byte becomes 0. So after success both are clear. A failure value with a clear
/// triple tells of a condition of the operation's own, such as an empty name. The library keeps no
/// pointer to a triple beyond the call.
///
/// **Names** are ANSI strings in the code page of the calling thread, ended by 0. A name that
/// cannot be converted to wide text ends the operation with an exception of class CAtlException
/// (declared in `<atlexcept.h>`), whose m_hr is the HRESULT of the conversion's error code,
/// E_OUTOFMEMORY when there was no memory, or E_INVALIDARG for a name of 2 GB or more. What the
/// operation held by then is released. No other exception leaves these operations.
///
/// **Threads.** The library starts no thread and takes no lock. Free functions may be called from
/// any thread at any time, but for what their own descriptions tell.
#pragma once

#include <windows.h>

#include "jw32/export.h"

/// Sets the module in which the library looks for its string table and its other resources.
///
/// The library's own module is set when it is loaded, and again whenever a thread of the process
/// starts or ends, so that another module stands only until then. The handle is one word of the
/// process, read and written without synchronisation.
///
/// @param hModule the module; stored unchecked, null too
JW32_API void Jw32SetResourceHandle(HINSTANCE hModule);

/// Tells the module in which the library looks for its resources.
///
/// @return the handle that was stored last
JW32_API HINSTANCE Jw32GetResourceHandle();
