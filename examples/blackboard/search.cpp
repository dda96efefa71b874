// Searching a mapped file with a view that moves through it.
#include "search.h"

#include <algorithm>
#include <string_view>

namespace blackboard {

namespace {

// What a piece leaves to the next one, so that every finding has its whole excerpt in one piece.
constexpr DWORD overlap = longestWord + excerptLength;

class Search {
  public:
    Search(const std::string& path, const std::string& word, DWORD pieceSize)
        : path_(path), word_(word), pieceSize_(pieceSize) {
        DWORD mapped = 0, code = 0, sizeHigh = 0;
        char text[256] = "";
        // The first view may be smaller than the file: it is moved anyway.
        if (file_.Open(CJw32MmFile::eRead, path.c_str(), mapped, &code, text, sizeof text) ==
            nullptr) {
            throw Error(because("cannot map " + path, text, code));
        }
        size_ = file_.Size(&sizeHigh);
        if (sizeHigh != 0) throw Error("cannot map " + path + ": it has 4 GiB or more");
    }

    void run(Board& board) {
        for (DWORD at = 0; at < size_; board.tellSearched(at)) at += searchPiece(at, board);
    }

  private:
    // Searches from one place on. Gives how many bytes are done.
    DWORD searchPiece(DWORD at, Board& board) {
        const std::string_view piece = pieceAt(at);
        const bool isLast = piece.size() == size_ - at;
        const std::size_t done = isLast ? piece.size() : piece.size() - overlap;
        std::size_t counted = 0;
        for (std::size_t hit = piece.find(word_); hit < done; hit = piece.find(word_, hit + 1)) {
            countLines(piece.substr(counted, hit - counted));
            counted = hit;
            board.post(findingOf(piece.substr(hit), at + static_cast<DWORD>(hit)));
        }
        countLines(piece.substr(counted, done - counted));
        return static_cast<DWORD>(done);
    }

    // The bytes of the file from one place on, up to a piece's end. The view begins before them, at
    // a multiple of the system's granularity.
    std::string_view pieceAt(DWORD at) {
        DWORD offset = at, length = pieceSize_, code = 0;
        char text[256] = "";
        const void* const view = file_.ReMap(offset, length, &code, text, sizeof text);
        if (view == nullptr) throw Error(because("cannot map a piece of " + path_, text, code));
        const DWORD before = at - offset;
        if (length <= before + overlap && offset + length < size_) {
            throw Error("cannot map a piece of " + path_ + " that is large enough");
        }
        return {static_cast<const char*>(view) + before, length - before};
    }

    void countLines(std::string_view text) {
        line_ += static_cast<DWORD>(std::count(text.begin(), text.end(), '\n'));
    }

    Finding findingOf(std::string_view rest, DWORD offset) const {
        const auto end = std::min({rest.find_first_of("\r\n"), rest.size(), excerptLength});
        Finding finding;
        finding.line = line_;
        finding.offset = offset;
        rest.copy(finding.excerpt, end);
        return finding;
    }

    CJw32MmFile file_;
    const std::string& path_;
    const std::string& word_;
    const DWORD pieceSize_;
    DWORD size_ = 0;
    DWORD line_ = 1;
};

}  // namespace

void searchFile(const std::string& path, const std::string& word, DWORD pieceSize, Board& board) {
    Search(path, word, pieceSize).run(board);
}

}  // namespace blackboard
