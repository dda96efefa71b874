// One process of several that share named blocks: obeys the commands on its standard input, each of
// four words, and answers each with one line.
//
//     create NAME SIZE -, open NAME - -, exist NAME - -    done or no
//     write WORD OFFSET -, close - - -                     done
//     read - OFFSET LENGTH                                 the text
//     race NAME SIZE ROUNDS                                how often a block was joined, and broken
//
// What is not needed, a dash here, is any word where a word may stand and any number elsewhere.
#include <jw32/shared_memory.h>

#include <cstring>
#include <iostream>
#include <string>

namespace {

const std::string zero(1, '\0'), mark(1, '\xA5');

// Whether there is a block, and every byte is one of those allowed.
bool isWhole(const void* block, DWORD size, const std::string& allowed) {
    const std::string_view bytes(static_cast<const char*>(block), block != nullptr ? size : 0);
    return !bytes.empty() && bytes.find_first_not_of(allowed) == bytes.npos;
}

// Makes the block and fills it with marks, or joins it, and gives it up again, over and over. Other
// processes do so meanwhile. Who joins finds marks where the maker has come to.
std::string race(const char* name, DWORD size, DWORD rounds) {
    int joined = 0, broken = 0;
    for (DWORD round = 0; round < rounds; ++round) {
        CJw32SharedMemory memory, again;
        if (void* const made = memory.Create(name, size)) {
            if (!isWhole(made, size, zero)) ++broken;
            std::memset(made, mark[0], size);
            if (!isWhole(again.Open(name), size, mark)) ++broken;
        } else if (const void* const view = memory.Open(name)) {
            ++joined;
            if (!isWhole(view, size, zero + mark)) ++broken;
        }
    }
    return std::to_string(joined) + ' ' + std::to_string(broken);
}

std::string obey(CJw32SharedMemory& memory, const std::string& command, const std::string& word,
                 DWORD number, DWORD count) {
    const char* const name = word.c_str();
    unsigned char* const bytes = memory;
    bool done = true;
    if (command == "race") return race(name, number, count);
    if (command == "read") return {bytes + number, bytes + number + count};
    if (command == "write") std::memcpy(bytes + number, name, word.size());
    if (command == "create") done = memory.Create(name, number) != nullptr;
    if (command == "open") done = memory.Open(name) != nullptr;
    if (command == "exist") done = memory.Exist(name) != 0;
    if (command == "close") memory.Close();
    return done ? "done" : "no";
}

}  // namespace

int main() {
    CJw32SharedMemory memory;
    std::string command, word;
    DWORD number = 0, count = 0;
    while (std::cin >> command >> word >> number >> count) {
        std::cout << obey(memory, command, word, number, count) << std::endl;
    }
}
