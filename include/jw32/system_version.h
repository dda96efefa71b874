/// @file
/// Which system this is.
#pragma once

#include <windows.h>

#include "jw32/export.h"

/// The system as it described itself when the object was made.
///
/// An object holds plain values: copies are independent, and any number of threads may ask one
/// object. A system that cannot be asked is an unknown one, no terminal server and not of the NT
/// family.
class JW32_API CJw32SystemVersionInfo {
  public:
    /// The kinds of systems. Neither the build nor the product type takes part, so a server and a
    /// workstation of one version are of one kind.
    enum eOperatingSystem {
        eUnknownOS = 0,
        eWin32S = 1,
        eWin95 = 2,
        eWin98 = 3,
        eWinME = 4,
        eNT35 = 5,
        eNT40 = 6,
        eWin2000 = 7,
        eWinXP = 8,
        eWinServer2003 = 9,
        eWinVista = 10,  ///< a major version above 5 with the minor version 0
        eWin7 = 11,      ///< a major version above 5 with the minor version 1
    };

    /// Asks the system which one it is.
    CJw32SystemVersionInfo();
    /// Copies what the other object knows; the system is not asked.
    ///
    /// @param other the object to copy
    CJw32SystemVersionInfo(const CJw32SystemVersionInfo& other);
    /// Copies what the other object knows; the system is not asked.
    ///
    /// @param other the object to copy
    /// @return this object
    CJw32SystemVersionInfo& operator=(const CJw32SystemVersionInfo& other);
    virtual ~CJw32SystemVersionInfo();

    /// @return the kind of system
    eOperatingSystem GetOperatingSystem() const;

    /// @return 1 if the kind is eUnknownOS, else 0
    int IsUnknownOS() const;
    /// @return 1 if the kind is eWin32S, else 0
    int IsWin32S() const;
    /// @return 1 if the kind is eWin95, else 0
    int IsWin95() const;
    /// @return 1 if the kind is eWin98, else 0
    int IsWin98() const;
    /// @return 1 if the kind is eWinME, else 0
    int IsWinME() const;
    /// @return 1 if the kind is eNT35, else 0
    int IsNT35() const;
    /// @return 1 if the kind is eNT40, else 0
    int IsNT40() const;
    /// @return 1 if the kind is eWin2000, else 0
    int IsWin2000() const;
    /// @return 1 if the kind is eWinXP, else 0
    int IsWinXP() const;
    /// @return 1 if the kind is eWinServer2003, else 0
    int IsWinServer2003() const;
    /// @return 1 if the kind is eWinVista, else 0
    int IsWinVista() const;

    /// Goes by the platform id, so that unknown systems of the family count.
    ///
    /// @return 1 if the system is of the NT family, else 0
    int IsWinNTPlatform() const;

    /// @return 1 if the system serves several users at terminals, else 0
    int IsTerminalServer() const;

  private:
    OSVERSIONINFOEXA m_osvi;
    BOOL m_bExtended;
    BOOL m_bTerminalServer;
    eOperatingSystem m_eOperatingSystem;
};
