/// @file
/// One block of memory.
#pragma once

#include <windows.h>

#include <memory>

#include "jw32/export.h"

class ReleaseRecord;

/// Owns one block of memory that begins as zeros and can be read and written. Small blocks come
/// from the global heap, large ones straight from the system's pages.
///
/// An object is closed or open. Open() opens a closed object, Close() and the destructor release
/// the block; then it can be opened again, with another size. A block is never resized.
///
/// A copy of an open object holds the same block, not another one. Whoever closes first releases
/// the block, and nobody releases it twice; from then on the pointer is dead for all of them, and
/// the others are to be closed too before they are opened anew. An assignment writes over what the
/// target holds without releasing it: close the target first.
///
/// An object belongs to one thread at a time.
class JW32_API CJw32Memory {
  public:
    /// A closed object.
    CJw32Memory();
    /// A copy that holds the same block.
    /// @param other the object to copy
    CJw32Memory(const CJw32Memory& other);
    /// Makes this object hold what the other one holds. What it held itself is not released.
    /// @param other the object to copy
    /// @return this object
    CJw32Memory& operator=(const CJw32Memory& other);
    /// Releases the block as Close() does.
    virtual ~CJw32Memory();

    /// Gets a block of zeros.
    ///
    /// @param nSize the size in bytes
    /// @param nThreshold blocks of more bytes than this come from the system's pages, others from
    ///        the global heap; 0: 524288
    /// @param[out] pdwError, pszError, dwErrorSize the error triple (see jw32.h)
    /// @return the block, which stays the object's; null on failure, and with a clear triple when
    ///         the size is 0 or the object is open. A failure leaves the object as it was.
    unsigned char* Open(unsigned int nSize, unsigned int nThreshold = 0, DWORD* pdwError = nullptr,
                        char* pszError = nullptr, DWORD dwErrorSize = 0);

    /// Releases the block. Does nothing to a closed object.
    void Close();

    /// @return the size of the block in bytes as it was asked for; 0 while closed
    unsigned int Size();

    /// @return the block, which stays the object's; null while closed
    unsigned char* Address();

  private:
    HGLOBAL m_hGlobal;
    unsigned char* m_pAddress;
    unsigned int m_nSize;
    std::shared_ptr<ReleaseRecord> m_pRecord;
};
