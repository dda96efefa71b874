// Exceptions of the library reach its caller across the boundary of the DLL.
#include <atlexcept.h>
#include <gtest/gtest.h>
#include <jw32/files.h>

#include <climits>
#include <cstring>
#include <string>
#include <vector>

namespace {

struct Outcome {
    HRESULT thrown = S_OK;
    DWORD code = 7;
};

Outcome outcomeOfFinding(const char* name) {
    Outcome outcome;
    try {
        Jw32FileFind(name, &outcome.code);
    } catch (const CAtlException& exception) {
        outcome.thrown = exception.m_hr;
    }
    return outcome;
}

#ifndef _WIN64

TEST(Boundary, IsCrossedByTheExceptionOfAConversion) {
    constexpr SIZE_T megabyte = 1 << 20;
    const std::string name(4 * megabyte, 'n');
    std::vector<void*> pieces;  // of the address space, so that no large block is left
    for (SIZE_T size = 1024 * megabyte; size >= megabyte; size /= 2) {
        while (void* const piece = VirtualAlloc(nullptr, size, MEM_RESERVE, PAGE_NOACCESS)) {
            pieces.push_back(piece);
        }
    }
    const auto outcome = outcomeOfFinding(name.c_str());
    for (void* const piece : pieces) VirtualFree(piece, 0, MEM_RELEASE);
    EXPECT_EQ(outcome.thrown, E_OUTOFMEMORY);
    EXPECT_EQ(outcome.code, 0u);
}

#else

// A text of INT_MAX characters in little memory: the same block mapped again and again, and a last
// view of its own that holds the terminator.
class LongestText {
  public:
    LongestText() {
        start_ = static_cast<char*>(VirtualAlloc(nullptr, size_, MEM_RESERVE, PAGE_NOACCESS));
        VirtualFree(start_, 0, MEM_RELEASE);
        for (SIZE_T at = 0; at < size_; at += block_) {
            const bool last = at + block_ == size_;
            views_.push_back(MapViewOfFileEx(last ? end_ : repeated_, FILE_MAP_WRITE, 0, 0, block_,
                                             start_ + at));
        }
        if (!isWhole()) return;
        std::memset(views_.front(), 'n', block_);
        std::memset(views_.back(), 'n', block_ - 1);
    }
    ~LongestText() {
        for (void* const view : views_) UnmapViewOfFile(view);
        CloseHandle(repeated_);
        CloseHandle(end_);
    }
    LongestText(const LongestText&) = delete;
    LongestText& operator=(const LongestText&) = delete;

    const char* get() const { return start_; }
    bool isWhole() const {
        for (std::size_t i = 0; i < views_.size(); ++i) {
            if (views_[i] != start_ + i * block_) return false;
        }
        return true;
    }

  private:
    static constexpr SIZE_T size_ = SIZE_T{INT_MAX} + 1, block_ = 64 << 20;

    static HANDLE makeBlock() {
        return CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, block_,
                                  nullptr);
    }
    const HANDLE repeated_ = makeBlock(), end_ = makeBlock();
    char* start_ = nullptr;
    std::vector<void*> views_;
};

TEST(Boundary, IsCrossedByTheExceptionOfAConversion) {
    const LongestText name;
    ASSERT_TRUE(name.isWhole());
    const auto outcome = outcomeOfFinding(name.get());
    EXPECT_EQ(outcome.thrown, E_INVALIDARG);
    EXPECT_EQ(outcome.code, 0u);
}

#endif

}  // namespace
