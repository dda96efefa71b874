// Named blocks of memory that several processes share.
#include "jw32/shared_memory.h"

#include <cstring>

#include "frame/error_triple.h"
#include "frame/multibyte.h"
#include "frame/owner.h"
#include "memory/release_record.h"

namespace {

enum State : DWORD { Closed = 0, Opened = 1, Created = 2 };

HANDLE openMapping(const char* name) {
    return OpenFileMappingA(FILE_MAP_WRITE, FALSE, name);
}

constexpr void* none = nullptr;

}  // namespace

// What Create and Open do with the mapping that they have got.
struct SharedMemoryEntry {
    // Maps the whole block, and opens the object with it or reports that it cannot be had.
    static void* enter(CJw32SharedMemory& object, UniqueHandle& mapping, State state,
                       const char* name, const ErrorTriple& triple) {
        auto record = makeReleaseRecord();
        if (record == nullptr) return triple.fail(none);
        void* const view = MapViewOfFile(mapping.get(), FILE_MAP_WRITE, 0, 0, 0);
        if (view == nullptr) return triple.fail(none);
        object.m_hMapping = mapping.release();
        object.m_pView = static_cast<unsigned char*>(view);
        object.m_pRecord = std::move(record);
        object.m_dwState = state;
        if (name != nullptr) multibyte::copy(object.m_szName, name, _TRUNCATE);
        return view;
    }
};

CJw32SharedMemory::CJw32SharedMemory()
    : m_dwState(Closed), m_szName{}, m_dwSize(0), m_hMapping(nullptr), m_pView(nullptr) {}

CJw32SharedMemory::CJw32SharedMemory(const CJw32SharedMemory& other) = default;

CJw32SharedMemory& CJw32SharedMemory::operator=(const CJw32SharedMemory& other) = default;

CJw32SharedMemory::~CJw32SharedMemory() {
    Close();
}

void* CJw32SharedMemory::Create(const char* pszName, DWORD dwSize, DWORD* pdwError, char* pszError,
                                DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    if (m_dwState != Closed) return none;
    if (Exist(pszName)) return none;
    Close();
    const DWORD formerSize = m_dwSize;
    m_dwSize = dwSize;
    SetLastError(ERROR_SUCCESS);
    UniqueHandle mapping(
        CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, m_dwSize, pszName));
    if (!mapping) return triple.fail(none);
    if (GetLastError() == ERROR_ALREADY_EXISTS) {
        // Another one was faster, and its block may be smaller: the name is taken after all.
        m_dwSize = formerSize;
        return none;
    }
    void* const view = SharedMemoryEntry::enter(*this, mapping, Created, pszName, triple);
    if (view != nullptr) std::memset(view, 0, m_dwSize);
    return view;
}

void* CJw32SharedMemory::Open(const char* pszName, DWORD* pdwError, char* pszError,
                              DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    if (m_dwState != Closed) return none;
    Close();
    m_dwSize = 0;
    UniqueHandle mapping(openMapping(pszName));
    if (!mapping) return triple.fail(none);
    return SharedMemoryEntry::enter(*this, mapping, Opened, pszName, triple);
}

int CJw32SharedMemory::Exist(const char* pszName) const {
    const UniqueHandle mapping(openMapping(pszName));
    return mapping ? 1 : 0;
}

void CJw32SharedMemory::Close() {
    if (m_pRecord != nullptr && m_pRecord->claim()) {
        UnmapViewOfFile(m_pView);
        CloseHandle(m_hMapping);
    }
    m_pRecord.reset();
    m_dwState = Closed;
    m_hMapping = nullptr;
    m_pView = nullptr;
    std::memset(m_szName, 0, sizeof m_szName);
}

DWORD CJw32SharedMemory::Size() const {
    return m_dwSize;
}

CJw32SharedMemory::operator unsigned char*() const {
    return m_pView;
}
