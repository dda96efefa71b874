// The documented sizes of the records that pass between programs and the platform, which the compiler
// checks in every build.
#include <windows.h>

namespace {

template <class Record>
constexpr bool hasSize(std::size_t of32Bits, std::size_t of64Bits) {
    return sizeof(Record) == (sizeof(void*) == 4 ? of32Bits : of64Bits);
}

static_assert(hasSize<HANDLE>(4, 8) && hasSize<SIZE_T>(4, 8));
static_assert(hasSize<LONG>(4, 4) && hasSize<DWORD>(4, 4) && hasSize<WCHAR>(2, 2));
static_assert(hasSize<FILETIME>(8, 8) && hasSize<ULARGE_INTEGER>(8, 8));
static_assert(hasSize<SECURITY_ATTRIBUTES>(12, 24));
static_assert(hasSize<SYSTEM_INFO>(36, 48));
static_assert(hasSize<WIN32_FIND_DATAA>(320, 320) && hasSize<WIN32_FIND_DATAW>(592, 592));
static_assert(hasSize<OSVERSIONINFOA>(148, 148) && hasSize<OSVERSIONINFOEXA>(156, 156));

}  // namespace
