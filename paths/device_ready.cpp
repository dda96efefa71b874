// Whether a device answers.
#include <windows.h>

#include "frame/name_conversion.h"
#include "jw32/paths.h"

namespace {

// The process shows no dialog about a missing medium while this lives.
class QuietErrorMode {
  public:
    QuietErrorMode() : former_(SetErrorMode(SEM_FAILCRITICALERRORS)) {}
    ~QuietErrorMode() { SetErrorMode(former_); }
    QuietErrorMode(const QuietErrorMode&) = delete;
    QuietErrorMode& operator=(const QuietErrorMode&) = delete;

  private:
    UINT former_;
};

}  // namespace

int Jw32DeviceIsReady(const char* pszRoot) {
    const QuietErrorMode quiet;
    wchar_t volumeName[MAX_PATH];
    wchar_t fileSystemName[MAX_PATH];
    DWORD longestComponent = 0;
    DWORD flags = 0;
    return GetVolumeInformationW(Jw32WideName(pszRoot), volumeName, MAX_PATH, nullptr,
                                 &longestComponent, &flags, fileSystemName, MAX_PATH);
}
