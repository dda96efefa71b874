// One block of memory from the global heap or from the system's pages.
#include "jw32/memory.h"

#include "frame/error_triple.h"
#include "frame/owner.h"
#include "memory/release_record.h"

namespace {

constexpr unsigned int defaultThreshold = 0x80000;  // bytes

void* allocatePages(unsigned int size) {
    return VirtualAlloc(nullptr, size, MEM_COMMIT, PAGE_READWRITE);
}

using UniqueGlobal = Owner<HGLOBAL, GlobalFree>;

// The address of a block of the global heap; null, and no block, if it cannot be locked.
void* allocateGlobal(unsigned int size, UniqueGlobal& block) {
    block.reset(GlobalAlloc(GMEM_ZEROINIT, size));
    void* const address = block ? GlobalLock(block.get()) : nullptr;
    if (address == nullptr) block.reset();
    return address;
}

void freeGlobal(HGLOBAL handle) {
    GlobalUnlock(handle);
    GlobalFree(handle);
}

}  // namespace

CJw32Memory::CJw32Memory() : m_hGlobal(nullptr), m_pAddress(nullptr), m_nSize(0) {}

CJw32Memory::CJw32Memory(const CJw32Memory& other) = default;

CJw32Memory& CJw32Memory::operator=(const CJw32Memory& other) = default;

CJw32Memory::~CJw32Memory() {
    Close();
}

unsigned char* CJw32Memory::Open(unsigned int nSize, unsigned int nThreshold, DWORD* pdwError,
                                 char* pszError, DWORD dwErrorSize) {
    constexpr unsigned char* none = nullptr;
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    if (nThreshold == 0) nThreshold = defaultThreshold;
    if (nSize == 0 || m_hGlobal != nullptr || m_pAddress != nullptr) return none;
    auto record = makeReleaseRecord();
    if (record == nullptr) return triple.fail(none);
    UniqueGlobal block;
    void* const address = nSize > nThreshold ? allocatePages(nSize) : allocateGlobal(nSize, block);
    // After a failed GlobalLock the last error is that of the GlobalFree.
    if (address == nullptr) return triple.fail(none);
    m_hGlobal = block.release();
    m_pAddress = static_cast<unsigned char*>(address);
    m_nSize = nSize;
    m_pRecord = std::move(record);
    return m_pAddress;
}

void CJw32Memory::Close() {
    if (m_pRecord != nullptr && m_pRecord->claim()) {
        if (m_hGlobal != nullptr) {
            freeGlobal(m_hGlobal);
        } else {
            VirtualFree(m_pAddress, 0, MEM_RELEASE);
        }
    }
    m_pRecord.reset();
    m_hGlobal = nullptr;
    m_pAddress = nullptr;
    m_nSize = 0;
}

unsigned int CJw32Memory::Size() {
    return m_nSize;
}

unsigned char* CJw32Memory::Address() {
    return m_pAddress;
}
