// One process of several that share named blocks: obeys the commands on its standard input, and
// answers each with one line.
//
//     create NAME SIZE, open NAME, close, exist NAME    done or no
//     write OFFSET WORD                                 done
//     read OFFSET LENGTH                                the text
//     race NAME SIZE ROUNDS                             how often a block was made, joined, broken
#include <jw32/shared_memory.h>

#include <algorithm>
#include <cstring>
#include <iostream>
#include <sstream>
#include <string>

namespace {

constexpr unsigned char mark = 0xA5;

void answer(bool done) {
    std::cout << (done ? "done" : "no") << std::endl;
}

// A whole block holds zeros, or marks where its maker has come to.
bool isWhole(const unsigned char* bytes, DWORD size) {
    return std::all_of(bytes, bytes + size,
                       [](unsigned char byte) { return byte == 0 || byte == mark; });
}

// Whether the name leads to the block that its maker has filled with marks.
bool isFoundBy(const std::string& name, DWORD size) {
    CJw32SharedMemory again;
    const auto* const bytes = static_cast<const unsigned char*>(again.Open(name.c_str()));
    return bytes != nullptr && std::count(bytes, bytes + size, mark) == static_cast<int>(size);
}

// Makes or joins the block and gives it up again, over and over. Other processes do so meanwhile.
void race(const std::string& name, DWORD size, int rounds) {
    int made = 0, joined = 0, broken = 0;
    for (int round = 0; round < rounds; ++round) {
        CJw32SharedMemory memory;
        if (auto* const bytes = static_cast<unsigned char*>(memory.Create(name.c_str(), size))) {
            ++made;
            if (!std::all_of(bytes, bytes + size, [](unsigned char byte) { return byte == 0; })) {
                ++broken;
            }
            std::memset(bytes, mark, size);
            if (!isFoundBy(name, size)) ++broken;
        } else if (const void* const view = memory.Open(name.c_str())) {
            ++joined;
            if (!isWhole(static_cast<const unsigned char*>(view), size)) ++broken;
        }
    }
    std::cout << made << ' ' << joined << ' ' << broken << std::endl;
}

void obey(CJw32SharedMemory& memory, std::istream& line) {
    std::string command, name, word;
    DWORD offset = 0, size = 0;
    int rounds = 0;
    line >> command;
    unsigned char* const bytes = memory;
    if (command == "create" && line >> name >> size) {
        answer(memory.Create(name.c_str(), size) != nullptr);
    } else if (command == "open" && line >> name) {
        answer(memory.Open(name.c_str()) != nullptr);
    } else if (command == "exist" && line >> name) {
        answer(memory.Exist(name.c_str()) != 0);
    } else if (command == "write" && line >> offset >> word) {
        std::copy(word.begin(), word.end(), bytes + offset);
        answer(true);
    } else if (command == "read" && line >> offset >> size) {
        std::cout << std::string(bytes + offset, bytes + offset + size) << std::endl;
    } else if (command == "race" && line >> name >> size >> rounds) {
        race(name, size, rounds);
    } else {
        memory.Close();
        answer(command == "close");
    }
}

}  // namespace

int main() {
    CJw32SharedMemory memory;
    for (std::string line; std::getline(std::cin, line);) {
        std::istringstream words(line);
        obey(memory, words);
    }
    return 0;
}
