// Uses a header of each kind: the library's, and the system's that come with it.
#include <windows.h>

#include <cstdio>
#include <cstring>

#include <jw32/jw32.h>

int main() {
    char text[50] = "";
    const CJw32Angle bearing(-90.0, CJw32Angle::eAngleTypeDeg, CJw32Angle::eAngleRangePositive);
    bearing.AngleToString(text, sizeof text, CJw32Angle::eAngleTypeDmsMarked, 1);
    DWORD code = 0;
    const int found = Jw32FileFind("no such file", &code);
    std::printf("%s, %d, %u\n", text, found, unsigned(code));
    const bool right = std::strcmp(text, "270 0' 0.0\"") == 0 && found == 0;
    return right && code == ERROR_FILE_NOT_FOUND ? 0 : 1;
}
