// Reads a compound file from its bytes, in a way of its own, and proves that it is sound.
#pragma once

#include <map>
#include <string>

namespace compound_test {

// The content of a file: paths with '/' before each name, and the bytes of streams. Storages end
// with '/'.
using Contents = std::map<std::u16string, std::string>;

enum class After {
    call,  // nothing may be lost: chains are as long as their streams, deleted entries are clear
    kill,  // space may be lost; all else holds
};

struct Checked {
    std::string fault;  // empty: the file is sound
    Contents contents;
};

// Every sector has one owner, no chain crosses another or itself, all counts are right, trees are in
// order, without two reds in a row, and no deeper than 2 log2(count + 1).
Checked check(const std::string& bytes, After after);

}  // namespace compound_test
