// Reads a string that the program carries in its own resources.
#include <windows.h>

#include <cstdio>
#include <cstring>

int main() {
    char text[50] = "";
    LoadStringA(GetModuleHandleA(nullptr), 1, text, sizeof text);
    std::puts(text);
    return std::strcmp(text, "carried by the program") == 0 ? 0 : 1;
}
