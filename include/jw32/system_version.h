/// @file
/// Which system this is.
#pragma once

#include <windows.h>

#include "export.h"

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

    /// @name One kind each
    /// @return 1 if the system is of this kind, else 0
    /// @{
    int IsUnknownOS() const;
    int IsWin32S() const;
    int IsWin95() const;
    int IsWin98() const;
    int IsWinME() const;
    int IsNT35() const;
    int IsNT40() const;
    int IsWin2000() const;
    int IsWinXP() const;
    int IsWinServer2003() const;
    int IsWinVista() const;
    /// @}

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
