// blackboard search BOARD FILE WORD, blackboard read BOARD: one process searches, another one reads
// what it finds.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "board.h"
#include "search.h"

namespace {

using namespace blackboard;

constexpr const char* usage =
    "usage: blackboard search BOARD FILE WORD [PIECE]\n"
    "       blackboard read BOARD\n"
    "\n"
    "The first searches FILE for WORD and posts every place of it on a board in memory, which it\n"
    "makes under the name BOARD. The second, in another terminal, prints what is posted while the\n"
    "search goes on. Each waits some seconds for the other. The file is mapped PIECE KiB at a "
    "time,\n"
    "1024 without the argument, 128 at least.\n";

constexpr int patience = 10;  // seconds
constexpr DWORD kibibyte = 1024, usualPiece = 1024;

int search(const std::string& name, const std::string& path, const std::string& word, DWORD piece) {
    if (word.empty() || word.size() > longestWord) throw Error("the word has 1 to 200 bytes");
    Board board;
    board.create(name);
    searchFile(path, word, piece, board);
    board.notes().finished = 1;
    std::printf("Found    '%s' %u times in %s\n", word.c_str(),
                static_cast<unsigned>(board.notes().total), path.c_str());
    if (!waitFor(board.notes().taken, patience)) throw Error("nobody came to read the board");
    std::printf("Read     by another process\n");
    return 0;
}

DWORD printFrom(Notes& notes, DWORD shown) {
    for (; shown < notes.posted; ++shown) {
        const auto& finding = notes.findings[shown];
        std::printf("line %u, byte %u: %s\n", static_cast<unsigned>(finding.line),
                    static_cast<unsigned>(finding.offset), finding.excerpt);
    }
    return shown;
}

int read(const std::string& name) {
    Board board;
    board.open(name, patience);
    auto& notes = board.notes();
    DWORD shown = 0, searched = 0;
    int silence = 0;  // seconds
    while (!waitFor(notes.finished, 1)) {
        shown = printFrom(notes, shown);
        // The block lives on while this process has it open, so only silence tells.
        silence = notes.searched == searched ? silence + 1 : 0;
        if (silence > patience) throw Error("the search has come to a halt");
        searched = notes.searched;
    }
    shown = printFrom(notes, shown);
    if (notes.total > shown) {
        std::printf("and %u more\n", static_cast<unsigned>(notes.total - shown));
    }
    notes.taken = 1;
    return 0;
}

// The piece's size in bytes. Throws Error.
DWORD pieceOf(const std::string& text) {
    const auto size = std::strtoul(text.c_str(), nullptr, 10);
    constexpr unsigned long largest = 1 << 20;
    if (size * kibibyte < smallestPiece || size > largest) {
        throw Error("'" + text + "' is not a piece's size: 128 to 1048576 KiB");
    }
    return static_cast<DWORD>(size) * kibibyte;
}

int run(const std::vector<std::string>& words) {
    const bool searches = !words.empty() && words[0] == "search";
    if (searches && words.size() == 4) {
        return search(words[1], words[2], words[3], usualPiece * kibibyte);
    }
    if (searches && words.size() == 5) {
        return search(words[1], words[2], words[3], pieceOf(words[4]));
    }
    if (words.size() == 2 && words[0] == "read") return read(words[1]);
    const bool wantsHelp = words.size() == 1 && (words[0] == "--help" || words[0] == "-h");
    std::fputs(usage, wantsHelp ? stdout : stderr);
    return wantsHelp ? 0 : 2;
}

}  // namespace

int main(int count, char** arguments) {
    try {
        const int result = run({arguments + 1, arguments + count});
        // What could not be printed, as on a full disk, shows here at the latest.
        if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
            throw Error("cannot write the standard output");
        }
        return result;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "blackboard: %s\n", error.what());
        return 1;
    }
}
