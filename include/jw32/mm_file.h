/// @file
/// Files mapped into memory.
#pragma once

#include <windows.h>

#include <memory>

#include "jw32/export.h"

class ReleaseRecord;

/// Maps an existing file, which must not be empty, into the memory of the process, and gives the
/// view as a plain pointer.
///
/// Open(), then any number of ReMap(), then Close() or the destructor. The pointer stays the
/// object's, and is dead as soon as the next ReMap() unmaps it or the object is closed. A ReMap()
/// that finds no view leaves an open object without one, which can only be closed.
///
/// **Files of 4 GiB and more.** ReMap() reaches views that begin in the first 4 GiB. Open() asks
/// for the whole file, which 32-bit systems refuse; where one can be had, a mapped size is told as
/// 0xFFFFFFFF at most. The overload that settles for less goes on from that size.
///
/// A copy of an open object holds the same file and view. Whoever closes first releases both, and
/// nobody releases them twice; from then on the others give no view and are to be closed too.
/// A ReMap() of one is the end of the view for all of them. An assignment writes over what the
/// target holds without releasing it: close the target first.
///
/// An object belongs to one thread at a time. Any number of objects and processes may read one
/// file; a file that is open for writing is open to nobody else.
class JW32_API CJw32MmFile {
  public:
    /// What a file is opened for.
    enum eOpenmode : unsigned int {
        eRead = 1,       ///< reading; others may read it too
        eReadWrite = 2,  ///< reading and writing, shared with nobody
    };

    /// A closed object.
    CJw32MmFile();
    /// A copy that holds the same file and view.
    /// @param other the object to copy
    CJw32MmFile(const CJw32MmFile& other);
    /// Makes this object hold what the other one holds. What it held itself is not released.
    /// @param other the object to copy
    /// @return this object
    CJw32MmFile& operator=(const CJw32MmFile& other);
    /// Closes the object.
    virtual ~CJw32MmFile();

    /// Opens a file and maps the whole of it.
    ///
    /// @param eMode what for; any other value is refused with a clear triple
    /// @param pszFileName the file's name; goes to the platform as it is
    /// @param[out] pdwError, pszError, dwErrorSize the error triple (see jw32.h). For an empty
    ///        file the code is 0xFFFFFFFF and the text the library's own
    /// @return the view; null on failure, and with a clear triple when the object is open. A
    ///        failure leaves a closed object closed and releases what was had.
    void* Open(eOpenmode eMode, const char* pszFileName, DWORD* pdwError = nullptr,
               char* pszError = nullptr, DWORD dwErrorSize = 0);

    /// Opens a file and maps the whole of it or, where the platform refuses that, the first half,
    /// quarter, eighth and so on: the largest that can be had.
    ///
    /// @param eMode what for; any other value is refused with a clear triple
    /// @param pszFileName the file's name; goes to the platform as it is
    /// @param[out] dwMappedSize how many bytes from the start of the file the view covers; 0 on
    ///        failure, also when the object is open
    /// @param[out] pdwError, pszError, dwErrorSize the error triple, as above
    /// @return as above
    void* Open(eOpenmode eMode, const char* pszFileName, DWORD& dwMappedSize,
               DWORD* pdwError = nullptr, char* pszError = nullptr, DWORD dwErrorSize = 0);

    /// Moves the view to another place of the file. The view begins at the rounded offset and ends
    /// at the rounded offset plus the length: mind what comes back in both arguments.
    ///
    /// @param[in,out] dwOffset the place in bytes from the start of the file; comes back rounded
    ///        down to a multiple of the system's allocation granularity
    /// @param[in,out] dwLength the size of the view in bytes; 0: to the end of the file. A view
    ///        that would reach beyond the end is cut, and one that the platform refuses is halved
    ///        until it can be had. Comes back as what was mapped, a 0 as 0.
    /// @param[out] pdwError, pszError, dwErrorSize the error triple: tells why the platform gave no
    ///        view
    /// @return the view; null with a clear triple and unchanged arguments when the object has none
    ///        or the offset does not lie inside the file, in which case the present view stays;
    ///        null with the length 0 when no view could be had, and the old one is gone
    void* ReMap(DWORD& dwOffset, DWORD& dwLength, DWORD* pdwError = nullptr,
                char* pszError = nullptr, DWORD dwErrorSize = 0);

    /// Unmaps the view and closes the file. Does nothing to a closed object.
    void Close();

    /// Tells how large the file was at the last Open(), also when the object was closed since. It
    /// is 0 when that ended before the size was known.
    ///
    /// @param[out] pdwHigh the high half of the size; may be null
    /// @return the low half of the size in bytes
    DWORD Size(DWORD* pdwHigh = nullptr) const;

  private:
    friend class MmFileOpening;

    eOpenmode m_eOpenmode;
    char* m_pszFileName;
    DWORD m_dwSizeLow;
    DWORD m_dwSizeHigh;
    HANDLE m_hFile;
    HANDLE m_hMapping;
    void* m_pView;
    std::shared_ptr<ReleaseRecord> m_pRecord;
};
