/// @file
/// Named blocks of memory that several processes share.
#pragma once

#include <windows.h>

#include <memory>

#include "jw32/export.h"

class ReleaseRecord;

/// One process's access to a named block of memory, backed by the system's paging file. One object
/// creates the block, others open it by its name, and all see the same bytes.
///
/// The block begins with the callers' first byte: the library keeps nothing in it, neither its size
/// nor a lock, so that the processes agree on both. It lives for as long as any process has it
/// open, whoever created it. Names follow the platform's rules: at most 259 characters, with or
/// without "Local\" or "Global\" in front, and no other backslash.
///
/// A copy of an open object holds the same view. Whoever closes first releases it, and nobody
/// releases it twice; from then on the pointer is dead for all of them, and the others are to be
/// closed too before they are used anew. An assignment writes over what the target holds without
/// releasing it: close the target first.
///
/// An object belongs to one thread at a time.
class JW32_API CJw32SharedMemory {
  public:
    /// A closed object.
    CJw32SharedMemory();
    /// A copy that holds the same view.
    /// @param other the object to copy
    CJw32SharedMemory(const CJw32SharedMemory& other);
    /// Makes this object hold what the other one holds. What it held itself is not released.
    /// @param other the object to copy
    /// @return this object
    CJw32SharedMemory& operator=(const CJw32SharedMemory& other);
    /// Closes the object.
    virtual ~CJw32SharedMemory();

    /// Creates a block of zeros. A block that exists is never joined, and not touched, also when
    /// another process creates it at the same moment.
    ///
    /// @param pszName the block's name; null or empty: a block that nobody else can open
    /// @param dwSize the size in bytes; the platform refuses 0
    /// @param[out] pdwError, pszError, dwErrorSize the error triple (see jw32.h)
    /// @return the view, which stays the object's; null on failure, and with a clear triple when
    ///        the object is not closed or the name is taken
    void* Create(const char* pszName, DWORD dwSize, DWORD* pdwError = nullptr,
                 char* pszError = nullptr, DWORD dwErrorSize = 0);

    /// Opens an existing block for reading and writing.
    ///
    /// @param pszName the block's name
    /// @param[out] pdwError, pszError, dwErrorSize the error triple
    /// @return the view of the whole block, which stays the object's; null on failure, and with a
    ///         clear triple when the object is not closed
    void* Open(const char* pszName, DWORD* pdwError = nullptr, char* pszError = nullptr,
               DWORD dwErrorSize = 0);

    /// Tells whether a block can be opened, whatever this object holds.
    ///
    /// @param pszName the block's name
    /// @return 1 it can; 0 it does not exist, or refuses write access
    int Exist(const char* pszName) const;

    /// Unmaps the view and closes the block. Does nothing to a closed object.
    void Close();

    /// @return the size in bytes that was given to the last Create(), also after Close(); 0 after
    ///         Open(). A Create() that found the name taken changes nothing.
    DWORD Size() const;

    /// @return the view; null while closed
    operator unsigned char*() const;

  private:
    friend struct SharedMemoryEntry;

    DWORD m_dwState;
    char m_szName[MAX_PATH];  // cut to what fits, at a whole character
    DWORD m_dwSize;
    HANDLE m_hMapping;
    unsigned char* m_pView;
    std::shared_ptr<ReleaseRecord> m_pRecord;
};
