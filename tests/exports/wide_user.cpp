// A shared object that does what the libraries must not: it calls the host's wide code.
#include <cwchar>
#include <iostream>
#include <string>

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED std::size_t lengthOf(const wchar_t* text) {
    return std::wcslen(text);
}

EXPORTED std::size_t doubledLength(const wchar_t* text) {
    return std::wstring(text).append(text).size();
}

EXPORTED void show(const wchar_t* text) {
    std::wcout << text;
}
