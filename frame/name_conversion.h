// Short-lived conversions of names between ANSI and wide text, in the thread's ANSI code page.
#pragma once

#include <windows.h>

/// Room for a text: 128 characters in place, the heap beyond.
template <class Character>
class NameRoom {
  public:
    NameRoom(const NameRoom&) = delete;
    NameRoom& operator=(const NameRoom&) = delete;

  protected:
    NameRoom() = default;
    ~NameRoom() { release(); }

    /// Makes room for `count` characters; the former content is lost. Throws CAtlException with
    /// E_INVALIDARG for a count beyond an int and E_OUTOFMEMORY when there is no memory.
    void reserve(long long count);

    /// The current text, in place or on the heap; null when the source was null.
    Character* text_ = nullptr;

  private:
    static constexpr int inPlaceCount = 128;
    void release();

    Character inPlace_[inPlaceCount];
};

/// A wide copy of an ANSI string. Throws CAtlException when the string cannot be converted:
/// the HRESULT of the last error, or what NameRoom throws.
class Jw32WideName : private NameRoom<wchar_t> {
  public:
    explicit Jw32WideName(const char* source);
    operator const wchar_t*() const { return text_; }
};

/// An ANSI copy of a wide string; throws as Jw32WideName.
class Jw32AnsiName : private NameRoom<char> {
  public:
    explicit Jw32AnsiName(const wchar_t* source);
    operator const char*() const { return text_; }
};
