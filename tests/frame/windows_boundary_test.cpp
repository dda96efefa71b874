// Exceptions of the library reach its caller across the boundary of the DLL.
#include <atlexcept.h>
#include <gtest/gtest.h>
#include <jw32/files.h>

#include <string>
#include <vector>

namespace {

TEST(Boundary, IsCrossedByTheExceptionOfAConversion) {
    constexpr SIZE_T megabyte = 1 << 20;
    const std::string name(4 * megabyte, 'n');
    DWORD code = 7;
    HRESULT thrown = S_OK;
    std::vector<void*> pieces;  // of the address space, so that no large block can be had
    for (SIZE_T size = 1024 * megabyte; size >= megabyte; size /= 2) {
        while (void* const piece = VirtualAlloc(nullptr, size, MEM_RESERVE, PAGE_NOACCESS)) {
            pieces.push_back(piece);
        }
    }
    try {
        Jw32FileFind(name.c_str(), &code);
    } catch (const CAtlException& exception) {
        thrown = exception.m_hr;
    }
    for (void* const piece : pieces) VirtualFree(piece, 0, MEM_RELEASE);
    EXPECT_EQ(thrown, E_OUTOFMEMORY);
    EXPECT_EQ(code, 0u);
}

}  // namespace
