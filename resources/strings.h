/* The library's texts, for the resource compiler and for the string table of the Linux build. */
#pragma once

#define JW32_STRING_NOT_AVAILABLE 1
#define JW32_TEXT_NOT_AVAILABLE "Not Available"

#define JW32_STRING_EMPTY_FILE 2
#define JW32_TEXT_EMPTY_FILE "Cannot create filemapping for files with size 0"
