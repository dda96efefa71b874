// Message texts of system codes.
#pragma once

#include <windows.h>

/// Stores the system's text of a code, in the user's language, as the platform gives it: a trailing
/// line end stays. The codes of the network family, 2100 to 2999, are looked up in netmsg.dll too.
/// Gives the number of characters stored; 0 when there is no text or it does not fit, and the
/// buffer then holds what the platform left in it.
DWORD Jw32SystemMessage(DWORD code, char* text, DWORD size);

/// The same for the low word of an HRESULT: facility and severity take no part, and netmsg.dll
/// is never asked.
void Jw32ComMessage(WORD code, char* text, DWORD size);
