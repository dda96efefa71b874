// Wide copies of names, for calls that take no other, and the way back.
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

inline std::string narrow(const wchar_t* text) {
    char result[MAX_PATH] = "";
    WideCharToMultiByte(CP_ACP, 0, text, -1, result, sizeof result, nullptr, nullptr);
    return result;
}
