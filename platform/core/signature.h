// The name and the signature of an entry point, taken from the function itself when the code is
// compiled: nameOf<&DeleteFileW> is "DeleteFileW", and that of a method is "IStorage::OpenStream".
#pragma once

#include <functional>
#include <string_view>

namespace machine {

namespace detail {

// The compiler puts the template's argument into this function's name, as in
// "... [with auto Function = DeleteFileW; ...]" or "... [Function = &IStorage::OpenStream]".
template <auto Function>
constexpr std::string_view textWithName() {
    return __PRETTY_FUNCTION__;
}

constexpr std::string_view cutName(std::string_view text) {
    constexpr std::string_view sign = "Function = ";
    text.remove_prefix(text.find(sign) + sign.size());
    text = text.substr(0, text.find_first_of(";]"));
    text.remove_prefix(text.starts_with('&') ? 1 : 0);
    return text;
}

template <class Pointer>
struct Signature;
template <class Return, class... Parameters>
struct Signature<Return (*)(Parameters...)> {
    using Result = Return;
    using Function = std::function<Return(Parameters...)>;
};
template <class Return, class Class, class... Parameters>
struct Signature<Return (Class::*)(Parameters...)> : Signature<Return (*)(Parameters...)> {};

}  // namespace detail

template <auto Function>
inline constexpr std::string_view nameOf = detail::cutName(detail::textWithName<Function>());

template <auto Function>
using ResultOf = typename detail::Signature<decltype(Function)>::Result;

// What can take the call's place. That of a method comes without `this`.
template <auto Function>
using ReplacementOf = typename detail::Signature<decltype(Function)>::Function;

}  // namespace machine
