// The question for the NT family.
#include "identification/nt_platform.h"

#include "jw32/system_version.h"

int Jw32IsNtPlatformNow() {
    return CJw32SystemVersionInfo().IsWinNTPlatform();
}
