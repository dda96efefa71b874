// A wide copy of a name, for calls that take no other.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

class Wide {
  public:
    explicit Wide(const std::string& text) : text_(text.size() + 1) {
        MultiByteToWideChar(CP_ACP, 0, text.c_str(), -1, text_.data(),
                            static_cast<int>(text_.size()));
    }
    operator const wchar_t*() const { return text_.data(); }

  private:
    std::vector<wchar_t> text_;
};
