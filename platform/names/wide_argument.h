// ANSI arguments of the interface as wide ones.
#pragma once

#include <cstring>
#include <string>
#include <vector>

#include "core/ansi.h"
#include "names/paths.h"

namespace machine {

// A wide copy of an ANSI path for the length of a call; null stays null. Of a text that is longer
// than any path no more is taken than shows that.
class WideArgument {
  public:
    explicit WideArgument(const char* text) : isNull_(text == nullptr) {
        if (isNull_) return;
        constexpr std::size_t mostBytesPerUnit = 3;
        const auto wide = fromAnsi({text, ::strnlen(text, mostBytesPerUnit * (longestPath + 1))});
        text_.assign(wide.begin(), wide.end());
        text_.push_back(0);
    }
    operator const wchar_t*() const { return isNull_ ? nullptr : text_.data(); }

  private:
    bool isNull_;
    std::vector<wchar_t> text_;
};

}  // namespace machine
