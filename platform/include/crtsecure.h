// The bounded functions of the C runtime that the host's own <stdlib.h>, <string.h> and <stdio.h>
// lack. Each terminates what it writes; a buffer that is too small comes back empty, with ERANGE.
#pragma once

#include <cerrno>
#include <cstdarg>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "platform_export.h"

using errno_t = int;

inline constexpr std::size_t _TRUNCATE = static_cast<std::size_t>(-1);
inline constexpr errno_t STRUNCATE = 80;

// A copy from malloc, for free; null when there is no memory.
WINBASEAPI char* _strdup(const char* text);
WINBASEAPI errno_t strcpy_s(char* target, std::size_t size, const char* source);
WINBASEAPI errno_t strcat_s(char* target, std::size_t size, const char* source);

// Format as printf does, with exact ties of %f rounded away from zero. Where the text does not fit
// (ERANGE) or the format is not known (EINVAL), the text is empty and the result -1.
WINBASEAPI int vsprintf_s(char* target, std::size_t size, const char* format, va_list arguments);
WINBASEAPI int sprintf_s(char* target, std::size_t size, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

// The digits of the value's magnitude, rounded to `decimals` decimals, ties away from zero. The
// point stands behind the first `point` digits; it is 0 or negative for a value below 1.
// EINVAL for infinity and for what is no number.
WINBASEAPI errno_t _fcvt_s(char* digits, std::size_t size, double value, int decimals, int* point,
                           int* sign);

// The value of a variable in a block from malloc, for free, and its length with the terminator;
// null and 0 where it is not set.
WINBASEAPI errno_t _dupenv_s(char** value, std::size_t* length, const char* name);
// "NAME=value"; without a value the variable is taken away. 0, or -1 on failure.
WINBASEAPI int _putenv(const char* assignment);

// The name of a file that does not exist, in a block from malloc, for free: in the directory of the
// variable TMP where that exists, else in the given one. Null when no name can be had.
WINBASEAPI char* _tempnam(const char* directory, const char* prefix);

// Cuts a path into its parts; a part that is not wanted has a null pointer and the size 0.
WINBASEAPI errno_t _splitpath_s(const char* path, char* drive, std::size_t driveSize,
                                char* directory, std::size_t directorySize, char* name,
                                std::size_t nameSize, char* extension, std::size_t extensionSize);
