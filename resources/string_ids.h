/* The numbers of the library's texts, for the resource compiler and for the sources. */
#pragma once

#define JW32_STRING_NOT_AVAILABLE 1
#define JW32_STRING_EMPTY_FILE 2
