// ANSI arguments of the interface as wide ones.
#pragma once

#include <string>
#include <vector>

#include "machine/text.h"

namespace machine {

// A wide copy of an ANSI string for the length of a call; null stays null.
class WideArgument {
  public:
    explicit WideArgument(const char* text) : isNull_(text == nullptr) {
        if (isNull_) return;
        const auto wide = fromAnsi(text);
        text_.assign(wide.begin(), wide.end());
        text_.push_back(0);
    }
    operator const wchar_t*() const { return isNull_ ? nullptr : text_.data(); }

  private:
    bool isNull_;
    std::vector<wchar_t> text_;
};

}  // namespace machine
