// A wide copy of a name, for calls that take no other.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

using WideText = std::vector<wchar_t>;  // with its terminator

class Wide {
  public:
    explicit Wide(const std::string& text) : text_(text.size() + 1) {
        const auto room = static_cast<int>(text_.size());
        MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, text_.data(), room);
    }
    operator const wchar_t*() const { return text_.data(); }
    const WideText& text() const { return text_; }

  private:
    WideText text_;
};
