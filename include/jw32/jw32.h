/// @file
/// The whole interface of the library, and what all operations share.
///
/// **Failures.** The result comes first: 0 or null, INVALID_HANDLE_VALUE for a handle, -1 for a
/// size. Operations that can fail for a reason of the system's end in three parameters, the *error
/// triple*, each of which may be left out without the others:
///
/// - `pdwError` receives the system error code; null: no code is wanted.
/// - `pszError` is the caller's buffer for the system's message text in ANSI; null: no text is
///   wanted. A line end after the text stays in it. Where the system has no text for the code, or
///   the buffer is too small for it, there is the code alone.
/// - `dwErrorSize` is the capacity of the buffer in bytes, terminator included; 0: no text is
///   wanted, and the buffer is not touched at all.
///
/// Every such operation first clears the triple: the code becomes 0, and of a buffer that holds a
/// text the first byte becomes 0. So after success both are clear. A failure value with a clear
/// triple means a condition of the operation's own, such as an empty name. The library keeps no
/// pointer to a triple beyond the call.
///
///     DWORD code = 0;
///     char text[256] = "";
///     if (!Jw32FileMove("C:\\new.txt", "D:\\new.txt", &code, text, sizeof text)) {
///         std::printf("%u %s", unsigned(code), text);
///     }
///
/// **Names** are ANSI strings in the code page of the calling thread, ended by 0. A name that
/// cannot be converted to wide text ends the operation with an exception of class CAtlException
/// (declared in `<atlexcept.h>`), whose m_hr is the HRESULT of the conversion's error code,
/// E_OUTOFMEMORY when there was no memory, or E_INVALIDARG for a name of 2 GB or more. What the
/// operation held by then is released. No other exception leaves these operations.
///
/// **Threads.** The library starts no thread and takes no lock. Free functions may be called from
/// any thread at any time, unless their own descriptions limit that.
#pragma once

#include "jw32/angle.h"
#include "jw32/angles.h"
#include "jw32/crc.h"
#include "jw32/directories.h"
#include "jw32/directory_links.h"
#include "jw32/divisors.h"
#include "jw32/file_names.h"
#include "jw32/files.h"
#include "jw32/folders.h"
#include "jw32/free_space.h"
#include "jw32/memory.h"
#include "jw32/mm_file.h"
#include "jw32/paths.h"
#include "jw32/resource_handle.h"
#include "jw32/shared_memory.h"
#include "jw32/system_version.h"
#include "jw32/temperature.h"
#include "jw32/temporary_files.h"
#include "jw32/version.h"
