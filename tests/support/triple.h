// What operations report by the error triple that their last arguments are.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <ostream>
#include <string>

namespace triple_detail {

inline const char* passed(const std::string& text) {
    return text.c_str();
}
template <class Argument>
Argument passed(Argument argument) {
    return argument;
}

}  // namespace triple_detail

// An error triple as a caller keeps it, full of an older failure.
struct Triple {
    DWORD code = 4711;
    char text[256] = "an older failure";
    static constexpr DWORD size = sizeof text;

    // What an operation gives that reports here by its last arguments.
    template <class Operation, class... Arguments>
    auto of(Operation operation, Arguments... arguments) {
        *this = {};
        return operation(triple_detail::passed(arguments)..., &code, text, size);
    }
};

// The result of an operation and the code that it told; with a code comes a text, without it none.
template <class Result>
struct Report {
    Report(Result given, const Triple& triple)
        : result(given), code(triple.code), hasText(triple.text[0] != '\0') {}
    explicit Report(Result given, DWORD told = 0) : result(given), code(told), hasText(told != 0) {}

    Result result;
    DWORD code;
    bool hasText;

    friend std::ostream& operator<<(std::ostream& out, const Report& report) {
        return out << report.result << " with code " << report.code << " and "
                   << (report.hasText ? "a text" : "no text");
    }
};

template <class Left, class Right>
bool operator==(const Report<Left>& left, const Report<Right>& right) {
    return left.result == right.result && left.code == right.code && left.hasText == right.hasText;
}

// Runs an operation with a triple: EXPECT_EQ(reported(Jw32FileHide, name), Report(1));
template <class Operation, class... Arguments>
auto reported(Operation operation, Arguments... arguments) {
    Triple triple;
    const auto result = triple.of(operation, arguments...);
    return Report(result, triple);
}
