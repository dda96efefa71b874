// Exceptions of the library reach its caller across the boundary of the DLL.
#include <atlexcept.h>
#include <gtest/gtest.h>
#include <jw32/files.h>

#include <string>
#include <vector>

namespace {

// Holds all large pieces of the address space, so that no large block can be had.
class AddressSpaceShortage {
  public:
    explicit AddressSpaceShortage(SIZE_T smallest) {
        for (SIZE_T size = SIZE_T{1} << 30; size >= smallest; size /= 2) {
            while (void* const piece = VirtualAlloc(nullptr, size, MEM_RESERVE, PAGE_NOACCESS)) {
                pieces_.push_back(piece);
            }
        }
    }
    ~AddressSpaceShortage() {
        for (void* const piece : pieces_) VirtualFree(piece, 0, MEM_RELEASE);
    }
    AddressSpaceShortage(const AddressSpaceShortage&) = delete;
    AddressSpaceShortage& operator=(const AddressSpaceShortage&) = delete;

  private:
    std::vector<void*> pieces_;
};

TEST(Boundary, IsCrossedByTheExceptionOfAConversion) {
    constexpr SIZE_T megabyte = 1 << 20;
    const std::string name(4 * megabyte, 'n');
    DWORD code = 7;
    try {
        const AddressSpaceShortage shortage(megabyte);
        Jw32FileFind(name.c_str(), &code);
        ADD_FAILURE() << "no exception, code " << code;
    } catch (const CAtlException& exception) {
        EXPECT_EQ(exception.m_hr, E_OUTOFMEMORY);
    }
    EXPECT_EQ(code, 0u);
}

}  // namespace
