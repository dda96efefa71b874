// Scripting of the platform's entry points: every operation announces itself in its first line,
// and a test can make it fail, answer for it, and read afterwards which calls were made.
//
//     BOOL WINAPI DeleteFileW(LPCWSTR name) {
//         if (const auto scripted = machine::call("DeleteFileW", name)) return scripted.or_(FALSE);
//
// While no script is active, an announcement costs one relaxed atomic load.
#pragma once

#include <atomic>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform_export.h"

namespace machine {

// A block of bytes as an argument: in the record it stands in hexadecimal.
struct Bytes {
    const void* first;
    std::size_t count;
};

// What the active script says about one call. False: nothing, the operation runs as usual.
class Verdict {
  public:
    Verdict() = default;
    static Verdict failing() { return Verdict{Kind::Fails, 0}; }
    static Verdict answering(std::uintptr_t value) { return Verdict{Kind::Answers, value}; }

    explicit operator bool() const { return kind_ != Kind::Runs; }

    // The scripted answer, or the operation's own failure value when the script says "fails".
    template <class Result>
    Result or_(Result failure) const {
        if (kind_ != Kind::Answers) return failure;
        if constexpr (std::is_pointer_v<Result>) {
            return reinterpret_cast<Result>(value_);
        } else {
            return static_cast<Result>(value_);
        }
    }

  private:
    enum class Kind { Runs, Fails, Answers };
    Verdict(Kind kind, std::uintptr_t value) : kind_(kind), value_(value) {}

    Kind kind_ = Kind::Runs;
    std::uintptr_t value_ = 0;
};

namespace detail {

extern std::atomic<bool> scriptActive;

std::string argumentText(const char* text);
std::string argumentText(const wchar_t* text);
std::string argumentText(const void* pointer);
std::string argumentText(const Bytes& bytes);

template <class Argument>
std::string describe(const Argument& argument) {
    if constexpr (std::is_integral_v<Argument>) {
        return std::to_string(argument);
    } else {
        return argumentText(argument);
    }
}

enum class Fallible : bool { No, Yes };
Verdict consult(const char* name, Fallible fallible, std::initializer_list<std::string> arguments);

// Whether the active script says that the module lacks the entry point.
bool isMissing(std::string_view module, std::string_view entryPoint);

}  // namespace detail

// Announces an operation that can fail. A script that makes it fail sets the last error.
template <class... Arguments>
[[nodiscard]] inline Verdict call(const char* name, const Arguments&... arguments) {
    if (!detail::scriptActive.load(std::memory_order_relaxed)) [[likely]]
        return {};
    return detail::consult(name, detail::Fallible::Yes, {detail::describe(arguments)...});
}

// Announces an operation that cannot fail, so that it stands in the record and can be answered for.
template <class... Arguments>
[[nodiscard]] inline Verdict query(const char* name, const Arguments&... arguments) {
    if (!detail::scriptActive.load(std::memory_order_relaxed)) [[likely]]
        return {};
    return detail::consult(name, detail::Fallible::No, {detail::describe(arguments)...});
}

}  // namespace machine
