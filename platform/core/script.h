// Scripting of the platform's entry points: every operation announces itself in its first line,
// with all its arguments in their order. A test can make it fail, answer for it or take its place,
// and reads afterwards which calls were made.
//
//     BOOL WINAPI DeleteFileW(LPCWSTR name) {
//         if (const auto scripted = machine::call<&DeleteFileW>(name)) {
//             return scripted.valueOr(FALSE);
//         }
//
// The function that announces says how the operation fails:
//
//     call             sets the last error                 scripted.valueOr(failure)
//     callForErrno     sets errno                          scripted.valueOr(failure)
//     callForCode      returns its code                    scripted.code()
//     callForHresult   returns an HRESULT                  scripted.code()
//     release          sets the last error, and releases   scripted.valueOr(failure)
//     query            cannot fail                         scripted.value()
//
// While no script is active, an announcement costs one relaxed atomic load.
#pragma once

#include <any>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>

#include "core/call_record.h"
#include "core/signature.h"
#include "errhandlingapi.h"
#include "winerror.h"

namespace machine {

// A pointer that an operation may write through stands in the record as a pointer only. These two
// take its place in an announcement where the operation reads first: the record shows the bytes, or
// the text up to its terminator.
struct Bytes {
    void* first;
    std::size_t count;
    operator void*() const { return first; }
};
struct Text {
    char* first;
    operator char*() const { return first; }
};

// What the active script says about one call. False: nothing, the operation runs as usual.
template <class Result>
class Scripted {
  public:
    Scripted() = default;
    static Scripted failing() { return Scripted(State::Fails, Result()); }
    static Scripted giving(Result given) { return Scripted(State::Gives, given); }

    explicit operator bool() const { return state_ != State::Runs; }

    // The scripted result, or the operation's own failure value where the script makes it fail.
    Result valueOr(Result failure) const { return state_ == State::Gives ? value_ : failure; }
    // Of an operation that always has one: it cannot fail, or returns its code.
    Result value() const { return value_; }
    Result code() const { return value_; }

  private:
    enum class State : std::uintptr_t { Runs, Fails, Gives };  // a word: it stays in a register
    Scripted(State state, Result given) : state_(state), value_(given) {}

    State state_ = State::Runs;
    Result value_ = Result();
};

template <>
class Scripted<void> {
  public:
    explicit Scripted(bool isDecided = false) : isDecided_(isDecided) {}
    explicit operator bool() const { return isDecided_; }

  private:
    bool isDecided_;
};

namespace detail {

extern std::atomic<bool> scriptActive;

inline bool isScripted() {
    return scriptActive.load(std::memory_order_relaxed);
}

// Addresses below 64 KiB stand for numbers, as in names of resources.
std::string argumentText(const char* text);
std::string argumentText(const wchar_t* text);
std::string argumentText(const Bytes& bytes);
inline std::string argumentText(const Text& text) {
    return argumentText(static_cast<const char*>(text.first));
}

template <class Type, class... Others>
inline constexpr bool isOneOf = (std::is_same_v<Type, Others> || ...);

template <class Argument>
std::string describe(const Argument& argument) {
    if constexpr (isOneOf<Argument, const char*, const wchar_t*, Text, Bytes>) {
        return argumentText(argument);
    } else if constexpr (std::is_pointer_v<Argument> || std::is_null_pointer_v<Argument>) {
        return argument == nullptr ? "null" : "pointer";
    } else if constexpr (std::is_enum_v<Argument>) {
        return std::to_string(static_cast<std::underlying_type_t<Argument>>(argument));
    } else if constexpr (std::is_arithmetic_v<Argument>) {
        return std::to_string(argument);
    } else {
        return "value";
    }
}

// What a rule makes of a call.
struct Decision {
    enum class Kind { Runs, Fails, IsAnswered, IsReplaced };

    Kind kind = Kind::Runs;
    std::uintptr_t value = 0;                    // the code of the failure, or the answer
    std::shared_ptr<std::any> replacement = {};  // a ReplacementOf the function
};
Decision consult(CallRecord call);

template <class Result>
Decision answering(Result value) {
    if constexpr (std::is_pointer_v<Result>) {
        return {Decision::Kind::IsAnswered, reinterpret_cast<std::uintptr_t>(value)};
    } else {
        return {Decision::Kind::IsAnswered, static_cast<std::uintptr_t>(value)};
    }
}

template <class Replacement>
Decision replacing(Replacement replacement) {
    return {Decision::Kind::IsReplaced, 0, std::make_shared<std::any>(std::move(replacement))};
}

// Whether the active script says that the module lacks the entry point.
bool isMissing(std::string_view module, std::string_view entryPoint);

template <class Result>
Result fromWord(std::uintptr_t word) {
    if constexpr (std::is_pointer_v<Result>) {
        return reinterpret_cast<Result>(word);
    } else {
        return static_cast<Result>(word);
    }
}

template <class Result>
Scripted<Result> answered(std::uintptr_t word) {
    if constexpr (std::is_void_v<Result>) {
        return Scripted<Result>(true);
    } else {
        return Scripted<Result>::giving(fromWord<Result>(word));
    }
}

template <class Result, class Replacement, class... Arguments>
Scripted<Result> replaced(const Replacement& replacement, const Arguments&... arguments) {
    if constexpr (std::is_void_v<Result>) {
        replacement(arguments...);
        return Scripted<Result>(true);
    } else {
        return Scripted<Result>::giving(replacement(arguments...));
    }
}

// A failure with the system code that the script gives.
template <CallKind Kind, class Result>
Scripted<Result> failed(std::uint32_t code) {
    if constexpr (Kind == CallKind::ReturnsCode) {
        return Scripted<Result>::giving(static_cast<Result>(code));
    } else if constexpr (Kind == CallKind::ReturnsHresult) {
        return Scripted<Result>::giving(HRESULT_FROM_WIN32(code));
    } else if constexpr (Kind == CallKind::SetsErrno) {
        errno = ENOMEM;
        return Scripted<Result>::failing();
    } else {
        SetLastError(code);
        return Scripted<Result>::failing();
    }
}

// Out of the way of the calls that no script watches, and with copies of the arguments, so that
// those stay in registers.
template <auto Function, CallKind Kind, class Release, class... Arguments>
[[gnu::cold, gnu::noinline]] Scripted<ResultOf<Function>> decide(Release release,
                                                                 Arguments... arguments) {
    using Result = ResultOf<Function>;
    using Replacement = ReplacementOf<Function>;
    static_assert(std::is_invocable_v<Replacement, Arguments...>,
                  "an announcement brings all arguments of its function");
    const auto decision = consult({std::string(nameOf<Function>), {describe(arguments)...}, Kind});
    if (const auto* const replacement = std::any_cast<Replacement>(decision.replacement.get())) {
        return replaced<Result>(*replacement, arguments...);
    }
    if (decision.kind == Decision::Kind::IsAnswered) return answered<Result>(decision.value);
    if constexpr (Kind != CallKind::CannotFail) {
        if (decision.kind == Decision::Kind::Fails) {
            release();
            return failed<Kind, Result>(static_cast<std::uint32_t>(decision.value));
        }
    }
    return Scripted<Result>();
}

template <auto Function, CallKind Kind, class... Arguments>
[[nodiscard]] inline Scripted<ResultOf<Function>> announce(const Arguments&... arguments) {
    if (!isScripted()) [[likely]]
        return Scripted<ResultOf<Function>>();
    return decide<Function, Kind>([] {}, arguments...);
}

}  // namespace detail

template <auto Function, class... Arguments>
[[nodiscard]] inline auto call(const Arguments&... arguments) {
    return detail::announce<Function, CallKind::SetsLastError>(arguments...);
}

template <auto Function, class... Arguments>
[[nodiscard]] inline auto callForErrno(const Arguments&... arguments) {
    return detail::announce<Function, CallKind::SetsErrno>(arguments...);
}

template <auto Function, class... Arguments>
[[nodiscard]] inline auto callForCode(const Arguments&... arguments) {
    return detail::announce<Function, CallKind::ReturnsCode>(arguments...);
}

template <auto Function, class... Arguments>
[[nodiscard]] inline auto callForHresult(const Arguments&... arguments) {
    return detail::announce<Function, CallKind::ReturnsHresult>(arguments...);
}

template <auto Function, class... Arguments>
[[nodiscard]] inline auto query(const Arguments&... arguments) {
    return detail::announce<Function, CallKind::CannotFail>(arguments...);
}

// `how` releases what the call is about. It runs where a script makes the call fail, so that nothing
// stays in use that nobody can release any more.
template <auto Function, class Release, class... Arguments>
[[nodiscard]] inline Scripted<ResultOf<Function>> release(const Release& how,
                                                          const Arguments&... arguments) {
    if (!detail::isScripted()) [[likely]]
        return Scripted<ResultOf<Function>>();
    return detail::decide<Function, CallKind::Releases>(how, arguments...);
}

}  // namespace machine
