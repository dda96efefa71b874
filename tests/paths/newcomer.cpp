// A program on the machine that needs no set-up: makes \newcomer\made on C:, by the current directory, and
// prints the codes of its steps.
#include <windows.h>

#include <cstdio>

#include "jw32/directories.h"
#include "jw32/files.h"

int main() {
    DWORD made = 0, entered = 0, written = 0;
    Jw32DirectoryCreate("C:\\newcomer", &made, nullptr, 0);
    if (!SetCurrentDirectoryA("C:\\Newcomer")) entered = GetLastError();
    CloseHandle(Jw32FileCreate("\\newcomer\\made", GENERIC_WRITE, CREATE_ALWAYS, 0, 0, &written));
    char here[MAX_PATH] = "";
    GetCurrentDirectoryA(sizeof here, here);
    std::printf("%u %u %u %s\n", made, entered, written, here);
}
