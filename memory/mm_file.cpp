// Files mapped into memory.
#include "jw32/mm_file.h"

#include <cstdint>
#include <cstdlib>

#include "frame/error_triple.h"
#include "frame/owner.h"
#include "memory/release_record.h"
#include "resources/string_ids.h"

namespace {

constexpr auto closed = static_cast<CJw32MmFile::eOpenmode>(0);
constexpr void* noView = nullptr;

// What the platform is asked for in a mode.
struct Access {
    DWORD file, share, protection, view;
};

constexpr Access reading{GENERIC_READ, FILE_SHARE_READ, PAGE_READONLY, FILE_MAP_READ};
constexpr Access writing{GENERIC_READ | GENERIC_WRITE, 0, PAGE_READWRITE, FILE_MAP_WRITE};

const Access& accessOf(CJw32MmFile::eOpenmode mode) {
    return mode == CJw32MmFile::eReadWrite ? writing : reading;
}

std::uint64_t whole(DWORD low, DWORD high) {
    return (std::uint64_t{high} << 32) | low;
}

// Halves the length until the mapping gives a view at the offset, or none of length 0 either.
void* mapLess(HANDLE mapping, DWORD access, DWORD offset, DWORD& length) {
    void* view = noView;
    while (view == noView && length > 0) {
        length >>= 1;
        view = MapViewOfFile(mapping, access, 0, offset, length);
    }
    return view;
}

}  // namespace

// One run of Open. What it has got is released with it unless the object takes it over.
class MmFileOpening {
  public:
    MmFileOpening(CJw32MmFile& object, const ErrorTriple& triple)
        : object_(object), triple_(triple) {}

    // Opens the file and its mapping. False: refused or reported.
    bool begin(CJw32MmFile::eOpenmode mode, const char* name) {
        if (object_.m_eOpenmode != closed) return false;
        forgetLastFile();
        if (mode != CJw32MmFile::eRead && mode != CJw32MmFile::eReadWrite) return false;
        mode_ = mode;
        name_ = name;
        record_ = makeReleaseRecord();
        if (record_ == nullptr) return triple_.fail(false);
        return openFile() && openMapping();
    }

    // The view of the whole file.
    void* mapWhole() const {
        // The low half of the size of a file of 4 GiB or more would give a part of the file.
        const bool byLength = mode_ == CJw32MmFile::eReadWrite && object_.m_dwSizeHigh == 0;
        return MapViewOfFile(mapping_.get(), accessOf(mode_).view, 0, 0,
                             byLength ? object_.m_dwSizeLow : 0);
    }

    void* mapStart(DWORD& length) const {
        return mapLess(mapping_.get(), accessOf(mode_).view, 0, length);
    }

    // Opens the object with a view, or reports that there is none.
    void* finish(void* view) {
        if (view == noView) return triple_.fail(noView);
        object_.m_pView = view;
        object_.m_hMapping = mapping_.release();
        object_.m_hFile = file_.release();
        object_.m_pszFileName = _strdup(name_);
        object_.m_eOpenmode = mode_;
        record_->address = view;
        object_.m_pRecord = std::move(record_);
        return view;
    }

  private:
    void forgetLastFile() {
        object_.m_dwSizeLow = object_.m_dwSizeHigh = 0;
        object_.m_hFile = INVALID_HANDLE_VALUE;
        object_.m_hMapping = nullptr;
        object_.m_pView = noView;
    }

    bool openFile() {
        const auto& access = accessOf(mode_);
        file_.reset(CreateFileA(name_, access.file, access.share, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
        if (!file_) return triple_.fail(false);
        SetLastError(NO_ERROR);
        const DWORD low = GetFileSize(file_.get(), &object_.m_dwSizeHigh);
        // All bits set are a size too. A size that is not known must not be taken for one.
        if (low == INVALID_FILE_SIZE && GetLastError() != NO_ERROR) {
            object_.m_dwSizeHigh = 0;
            return triple_.fail(false);
        }
        object_.m_dwSizeLow = low;
        if (low != 0 || object_.m_dwSizeHigh != 0) return true;
        constexpr DWORD emptyFile = 0xFFFFFFFF;
        return triple_.failWithString(false, emptyFile, JW32_STRING_EMPTY_FILE);
    }

    bool openMapping() {
        mapping_.reset(
            CreateFileMappingA(file_.get(), nullptr, accessOf(mode_).protection, 0, 0, nullptr));
        return mapping_ ? true : triple_.fail(false);
    }

    CJw32MmFile& object_;
    const ErrorTriple& triple_;
    CJw32MmFile::eOpenmode mode_ = closed;
    const char* name_ = nullptr;
    std::shared_ptr<ReleaseRecord> record_;
    UniqueFile file_;
    UniqueHandle mapping_;
};

CJw32MmFile::CJw32MmFile()
    : m_eOpenmode(closed),
      m_pszFileName(nullptr),
      m_dwSizeLow(0),
      m_dwSizeHigh(0),
      m_hFile(INVALID_HANDLE_VALUE),
      m_hMapping(nullptr),
      m_pView(nullptr) {}

CJw32MmFile::CJw32MmFile(const CJw32MmFile& other) = default;

CJw32MmFile& CJw32MmFile::operator=(const CJw32MmFile& other) = default;

CJw32MmFile::~CJw32MmFile() {
    Close();
}

void* CJw32MmFile::Open(eOpenmode eMode, const char* pszFileName, DWORD* pdwError, char* pszError,
                        DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    MmFileOpening opening(*this, triple);
    if (!opening.begin(eMode, pszFileName)) return noView;
    return opening.finish(opening.mapWhole());
}

void* CJw32MmFile::Open(eOpenmode eMode, const char* pszFileName, DWORD& dwMappedSize,
                        DWORD* pdwError, char* pszError, DWORD dwErrorSize) {
    dwMappedSize = 0;
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    MmFileOpening opening(*this, triple);
    if (!opening.begin(eMode, pszFileName)) return noView;
    void* view = opening.mapWhole();
    constexpr DWORD largest = 0xFFFFFFFF;
    dwMappedSize = m_dwSizeHigh == 0 ? m_dwSizeLow : largest;
    if (view == noView) view = opening.mapStart(dwMappedSize);
    return opening.finish(view);
}

void* CJw32MmFile::ReMap(DWORD& dwOffset, DWORD& dwLength, DWORD* pdwError, char* pszError,
                         DWORD dwErrorSize) {
    const ErrorTriple triple(pdwError, pszError, dwErrorSize);
    if (m_eOpenmode == closed || m_pView == noView) return noView;
    // A copy may have released all, or moved the view.
    if (m_pRecord->isReleased() || m_pRecord->address == noView) return noView;
    if (dwOffset >= whole(m_dwSizeLow, m_dwSizeHigh)) return noView;
    UnmapViewOfFile(m_pRecord->address);
    SYSTEM_INFO system{};
    GetSystemInfo(&system);
    dwOffset -= dwOffset % system.dwAllocationGranularity;
    if (std::uint64_t{dwOffset} + dwLength > whole(m_dwSizeLow, m_dwSizeHigh)) {
        dwLength = m_dwSizeLow - dwOffset;  // below 4 GiB, whatever the high half
    }
    const DWORD access = accessOf(m_eOpenmode).view;
    m_pView = MapViewOfFile(m_hMapping, access, 0, dwOffset, dwLength);
    if (m_pView == noView) m_pView = mapLess(m_hMapping, access, dwOffset, dwLength);
    m_pRecord->address = m_pView;
    return m_pView != noView ? m_pView : triple.fail(noView);
}

void CJw32MmFile::Close() {
    if (m_eOpenmode == closed) return;
    if (m_pRecord->claim()) {
        if (void* const view = m_pRecord->address) UnmapViewOfFile(view);
        if (m_hMapping != nullptr) CloseHandle(m_hMapping);
        if (m_hFile != INVALID_HANDLE_VALUE) CloseHandle(m_hFile);
        std::free(m_pszFileName);
    }
    m_pRecord.reset();
    m_pszFileName = nullptr;
    m_eOpenmode = closed;
}

DWORD CJw32MmFile::Size(DWORD* pdwHigh) const {
    if (pdwHigh != nullptr) *pdwHigh = m_dwSizeHigh;
    return m_dwSizeLow;
}
