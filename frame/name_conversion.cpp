// Conversions of names between ANSI and wide text.
#include "frame/name_conversion.h"

#include <atlexcept.h>

#include <climits>
#include <cstdlib>

template <class Character>
void NameRoom<Character>::reserve(long long count) {
    if (count < 0 || count > INT_MAX) throw CAtlException(E_INVALIDARG);
    release();
    if (count <= inPlaceCount) {
        text_ = inPlace_;
        return;
    }
    text_ =
        static_cast<Character*>(std::calloc(static_cast<std::size_t>(count), sizeof(Character)));
    if (text_ == nullptr) throw CAtlException(E_OUTOFMEMORY);
}

template <class Character>
void NameRoom<Character>::release() {
    if (text_ != inPlace_) std::free(text_);
    text_ = nullptr;
}

template class NameRoom<wchar_t>;
template class NameRoom<char>;

namespace {

// Converts into room for `count` characters. Where the platform wants more, it is asked how much,
// and gets that much once. `reserve(n)` makes room; `convert(n)` converts into room for n, gives 0
// on failure, and with n = 0 the room that is needed.
template <class Reserve, class Convert>
void convertInto(long long count, Reserve reserve, Convert convert) {
    reserve(count);
    if (convert(static_cast<int>(count)) != 0) return;
    if (GetLastError() == ERROR_INSUFFICIENT_BUFFER) {
        const int needed = convert(0);
        if (needed != 0) {
            reserve(needed);
            if (convert(needed) != 0) return;
        }
    }
    throw CAtlException(HRESULT_FROM_WIN32(GetLastError()));
}

}  // namespace

Jw32WideName::Jw32WideName(const char* source) {
    if (source == nullptr) return;
    const long long length = lstrlenA(source) + 1LL;
    convertInto(
        length, [&](long long count) { reserve(count); },
        [&](int room) {
            return MultiByteToWideChar(CP_THREAD_ACP, 0, source, static_cast<int>(length),
                                       room != 0 ? text_ : nullptr, room);
        });
}

Jw32AnsiName::Jw32AnsiName(const wchar_t* source) {
    if (source == nullptr) return;
    constexpr int bytesPerCharacter = 4;  // as many as any code page asks for
    const long long length = lstrlenW(source) + 1LL;
    convertInto(
        length * bytesPerCharacter, [&](long long count) { reserve(count); },
        [&](int room) {
            return WideCharToMultiByte(CP_THREAD_ACP, 0, source, static_cast<int>(length),
                                       room != 0 ? text_ : nullptr, room, nullptr, nullptr);
        });
}
