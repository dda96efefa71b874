// Tests from a list. Each line names an operation and its arguments, separated by blanks and in
// quotes where they hold blanks or nothing, and behind an equals sign what the operation gives. A
// tilde at its beginning marks a line that one of the builds leaves out. Unless told otherwise, all
// lines of an operation must have as many arguments as its first. Operations that several lists
// share need not stand in each.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <iomanip>
#include <map>
#include <sstream>
#include <string>
#include <vector>

using Words = std::vector<std::string>;
using Operations = std::map<std::string, std::function<std::string(const Words&)>>;

extern const char* const vectors;  // of the test program

inline void holdVectors(const Operations& operations, bool leavesOutMarked = false,
                        bool argumentsVary = false, const Operations& shared = {}) {
    Operations all = operations;
    all.insert(shared.begin(), shared.end());
    std::istringstream lines(vectors);
    std::map<std::string, std::size_t> used;  // and with how many arguments
    for (std::string line, name, word; std::getline(lines, line);) {
        if (line.empty() || line.starts_with('#')) continue;
        SCOPED_TRACE(line);
        const bool marked = line.starts_with('~');
        if (marked && leavesOutMarked) continue;
        const auto sign = line.find(" = ");
        std::istringstream left(line.substr(marked, sign - marked));
        left >> name;
        Words arguments;
        while (left >> std::quoted(word, '"', '\0')) arguments.push_back(word);
        EXPECT_EQ(all.at(name)(arguments), line.substr(sign + 3));
        const auto count = used.emplace(name, arguments.size()).first->second;
        EXPECT_TRUE(argumentsVary || arguments.size() == count) << "too many or too few arguments";
    }
    for (const auto& [name, operation] : operations) {
        EXPECT_TRUE(used.contains(name)) << name << " stands in no line";
    }
}
