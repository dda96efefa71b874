// An error triple as a caller keeps it, full of an older failure.
#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <ostream>
#include <string>

struct Triple {
    DWORD code = 4711;
    char text[256] = "an older failure";
    static constexpr DWORD size = sizeof text;

    // What an operation gives that reports here by its last arguments.
    template <class Operation, class... Arguments>
    auto of(Operation operation, Arguments... arguments) {
        *this = {};
        return operation(arguments..., &code, text, size);
    }
    bool isClear() const { return code == 0 && text[0] == '\0'; }
    bool tells(DWORD expected) const { return code == expected && text[0] != '\0'; }
    friend std::ostream& operator<<(std::ostream& out, const Triple& triple) {
        return out << "code " << triple.code << ", text \"" << triple.text << '"';
    }
};
