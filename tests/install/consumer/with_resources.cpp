// Reads a string that the program carries in its own resources.
#include <windows.h>

#include <cstdio>
#include <cstring>

#include <jw32/version.h>

int main() {
    char text[50] = "";
    LoadStringA(GetModuleHandleA(nullptr), 1, text, sizeof text);
    std::puts(text);
    return std::strcmp(text, JW32_VERSION_TEXT) == 0 ? 0 : 1;
}
