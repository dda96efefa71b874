// Which system this is.
#include "jw32/system_version.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace {

static_assert(sizeof(OSVERSIONINFOA) == 148 && sizeof(OSVERSIONINFOEXA) == 156);

using System = CJw32SystemVersionInfo;

constexpr DWORD any = 0xFFFFFFFF;

// The versions up to and including a bound, behind those of the rows above it.
struct VersionRange {
    DWORD platform, lastMajor, lastMinor;
    System::eOperatingSystem kind;
};

constexpr VersionRange versionRanges[] = {
    {VER_PLATFORM_WIN32s, any, any, System::eWin32S},
    {VER_PLATFORM_WIN32_WINDOWS, 3, any, System::eWin95},
    {VER_PLATFORM_WIN32_WINDOWS, 4, 0, System::eWin95},
    {VER_PLATFORM_WIN32_WINDOWS, 4, 89, System::eWin98},
    {VER_PLATFORM_WIN32_WINDOWS, any, any, System::eWinME},
    {VER_PLATFORM_WIN32_NT, 3, any, System::eNT35},
    {VER_PLATFORM_WIN32_NT, 4, any, System::eNT40},
    {VER_PLATFORM_WIN32_NT, 5, 0, System::eWin2000},
    {VER_PLATFORM_WIN32_NT, 5, 1, System::eWinXP},
    {VER_PLATFORM_WIN32_NT, 5, 2, System::eWinServer2003},
    {VER_PLATFORM_WIN32_NT, 5, any, System::eUnknownOS},
    {VER_PLATFORM_WIN32_NT, any, 0, System::eWinVista},
    {VER_PLATFORM_WIN32_NT, any, 1, System::eWin7},
};

System::eOperatingSystem classify(const OSVERSIONINFOEXA& version) {
    const auto covers = [&version](const VersionRange& range) {
        return version.dwPlatformId == range.platform &&
               version.dwMajorVersion <= range.lastMajor &&
               version.dwMinorVersion <= range.lastMinor;
    };
    const auto found = std::ranges::find_if(versionRanges, covers);
    return found != std::end(versionRanges) ? found->kind : System::eUnknownOS;
}

BOOL ask(OSVERSIONINFOEXA& version, std::size_t recordSize) {
    version.dwOSVersionInfoSize = static_cast<DWORD>(recordSize);
    return GetVersionExA(reinterpret_cast<OSVERSIONINFOA*>(&version));
}

bool servesTerminals(WORD suites) {
    return (suites & (VER_SUITE_TERMINAL | VER_SUITE_SINGLEUSERTS)) == VER_SUITE_TERMINAL;
}

}  // namespace

CJw32SystemVersionInfo::CJw32SystemVersionInfo()
    : m_osvi{}, m_bExtended(FALSE), m_bTerminalServer(FALSE), m_eOperatingSystem(eUnknownOS) {
    m_bExtended = ask(m_osvi, sizeof(OSVERSIONINFOEXA));
    if (!m_bExtended && !ask(m_osvi, sizeof(OSVERSIONINFOA))) return;
    m_bTerminalServer = servesTerminals(m_osvi.wSuiteMask) ? TRUE : FALSE;
    m_eOperatingSystem = classify(m_osvi);
}

CJw32SystemVersionInfo::CJw32SystemVersionInfo(const CJw32SystemVersionInfo&) = default;
CJw32SystemVersionInfo& CJw32SystemVersionInfo::operator=(const CJw32SystemVersionInfo&) = default;
CJw32SystemVersionInfo::~CJw32SystemVersionInfo() = default;

CJw32SystemVersionInfo::eOperatingSystem CJw32SystemVersionInfo::GetOperatingSystem() const {
    return m_eOperatingSystem;
}

int CJw32SystemVersionInfo::IsUnknownOS() const {
    return m_eOperatingSystem == eUnknownOS;
}
int CJw32SystemVersionInfo::IsWin32S() const {
    return m_eOperatingSystem == eWin32S;
}
int CJw32SystemVersionInfo::IsWin95() const {
    return m_eOperatingSystem == eWin95;
}
int CJw32SystemVersionInfo::IsWin98() const {
    return m_eOperatingSystem == eWin98;
}
int CJw32SystemVersionInfo::IsWinME() const {
    return m_eOperatingSystem == eWinME;
}
int CJw32SystemVersionInfo::IsNT35() const {
    return m_eOperatingSystem == eNT35;
}
int CJw32SystemVersionInfo::IsNT40() const {
    return m_eOperatingSystem == eNT40;
}
int CJw32SystemVersionInfo::IsWin2000() const {
    return m_eOperatingSystem == eWin2000;
}
int CJw32SystemVersionInfo::IsWinXP() const {
    return m_eOperatingSystem == eWinXP;
}
int CJw32SystemVersionInfo::IsWinServer2003() const {
    return m_eOperatingSystem == eWinServer2003;
}
int CJw32SystemVersionInfo::IsWinVista() const {
    return m_eOperatingSystem == eWinVista;
}

int CJw32SystemVersionInfo::IsWinNTPlatform() const {
    return m_osvi.dwPlatformId == VER_PLATFORM_WIN32_NT;
}

int CJw32SystemVersionInfo::IsTerminalServer() const {
    return m_bTerminalServer;
}
