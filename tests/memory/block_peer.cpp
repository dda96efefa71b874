// One process of several that share named blocks: obeys the commands on its standard input, and
// answers each with one line.
//
//     create NAME SIZE, open NAME, exist NAME    done or no
//     write WORD OFFSET, close                   done
//     read OFFSET LENGTH                         the text
//     race NAME SIZE ROUNDS                      how often a block was made, joined, broken
#include <jw32/shared_memory.h>

#include <cstring>
#include <iostream>
#include <sstream>
#include <string>

namespace {

const std::string zero(1, '\0'), mark(1, '\xA5');

std::string done(bool is) {
    return is ? "done" : "no";
}

// Whether there is a block, and every byte is one of those allowed.
bool isWhole(const void* block, DWORD size, const std::string& allowed) {
    if (block == nullptr) return false;
    const std::string_view bytes(static_cast<const char*>(block), size);
    return bytes.find_first_not_of(allowed) == bytes.npos;
}

// Makes the block and fills it with marks, or joins it, and gives it up again, over and over. Other
// processes do so meanwhile. Who joins finds marks where the maker has come to.
std::string race(const char* name, DWORD size, int rounds) {
    int made = 0, joined = 0, broken = 0;
    for (int round = 0; round < rounds; ++round) {
        CJw32SharedMemory memory, again;
        if (void* const block = memory.Create(name, size)) {
            ++made;
            if (!isWhole(block, size, zero)) ++broken;
            std::memset(block, mark[0], size);
            if (!isWhole(again.Open(name), size, mark)) ++broken;
        } else if (const void* const view = memory.Open(name)) {
            ++joined;
            if (!isWhole(view, size, zero + mark)) ++broken;
        }
    }
    return std::to_string(made) + ' ' + std::to_string(joined) + ' ' + std::to_string(broken);
}

std::string obey(CJw32SharedMemory& memory, std::istream& line) {
    std::string command, word;
    DWORD number = 0;
    int rounds = 0;
    line >> command >> word >> number >> rounds;
    const char* const name = word.c_str();
    const auto offset = std::strtoul(name, nullptr, 10);
    unsigned char* const bytes = memory;
    if (command == "create") return done(memory.Create(name, number) != nullptr);
    if (command == "open") return done(memory.Open(name) != nullptr);
    if (command == "exist") return done(memory.Exist(name) != 0);
    if (command == "race") return race(name, number, rounds);
    if (command == "read") return {bytes + offset, bytes + offset + number};
    if (command == "write") std::memcpy(bytes + number, name, word.size());
    if (command == "close") memory.Close();
    return "done";
}

}  // namespace

int main() {
    CJw32SharedMemory memory;
    for (std::string line; std::getline(std::cin, line);) {
        std::istringstream words(line);
        std::cout << obey(memory, words) << std::endl;
    }
    return 0;
}
