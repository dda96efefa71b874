// Text in the machine's code page, character by character.
#pragma once

#include "crtsecure.h"

WINBASEAPI unsigned char* _mbsinc(const unsigned char* text);
WINBASEAPI unsigned char* _mbschr(const unsigned char* text, unsigned int character);
WINBASEAPI unsigned char* _mbsrchr(const unsigned char* text, unsigned int character);
WINBASEAPI unsigned char* _mbsstr(const unsigned char* text, const unsigned char* wanted);
WINBASEAPI int _mbsicmp(const unsigned char* left, const unsigned char* right);

// Copies at most `count` bytes, no character in half. With _TRUNCATE as count, as much as fits, and
// STRUNCATE when that was not all.
WINBASEAPI errno_t _mbsnbcpy_s(unsigned char* target, std::size_t size, const unsigned char* source,
                               std::size_t count);
