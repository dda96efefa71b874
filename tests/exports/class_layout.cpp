// The size of each exported class and the places of its fields, which the compiler checks in every
// build: programs that were built against an older library keep working with a newer one.
#include <jw32/jw32.h>

#include <cstddef>

namespace {

// Of the builds of 32 and of 64 bits.
constexpr bool is(std::size_t value, std::size_t of32Bits, std::size_t of64Bits) {
    return value == (sizeof(void*) == 4 ? of32Bits : of64Bits);
}

static_assert(is(offsetof(CJw32Angle, m_dAngle), 8, 8));
static_assert(is(offsetof(CJw32Angle, m_eRange), 16, 16));
static_assert(is(sizeof(CJw32Angle), 24, 24));

static_assert(is(offsetof(CJw32Memory, m_hGlobal), 4, 8));
static_assert(is(offsetof(CJw32Memory, m_pAddress), 8, 16));
static_assert(is(offsetof(CJw32Memory, m_nSize), 12, 24));
static_assert(is(sizeof(CJw32Memory), 24, 48));

static_assert(is(offsetof(CJw32MmFile, m_eOpenmode), 4, 8));
static_assert(is(offsetof(CJw32MmFile, m_pszFileName), 8, 16));
static_assert(is(offsetof(CJw32MmFile, m_dwSizeLow), 12, 24));
static_assert(is(offsetof(CJw32MmFile, m_dwSizeHigh), 16, 28));
static_assert(is(offsetof(CJw32MmFile, m_hFile), 20, 32));
static_assert(is(offsetof(CJw32MmFile, m_hMapping), 24, 40));
static_assert(is(offsetof(CJw32MmFile, m_pView), 28, 48));
static_assert(is(sizeof(CJw32MmFile), 40, 72));

static_assert(is(offsetof(CJw32SharedMemory, m_dwState), 4, 8));
static_assert(is(offsetof(CJw32SharedMemory, m_szName), 8, 12));
static_assert(is(offsetof(CJw32SharedMemory, m_dwSize), 268, 272));
static_assert(is(offsetof(CJw32SharedMemory, m_hMapping), 272, 280));
static_assert(is(offsetof(CJw32SharedMemory, m_pView), 276, 288));
static_assert(is(sizeof(CJw32SharedMemory), 288, 312));

}  // namespace
