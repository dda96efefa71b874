// The board: a named block that one process writes on while another one reads.
#pragma once

#include <jw32/jw32.h>

#include <array>
#include <atomic>
#include <stdexcept>
#include <string>

namespace blackboard {

// What is wrong, and the system's reason where it has one.
class Error : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

// "what: the system's text (code)", with the last line end cut off.
std::string because(const std::string& what, const char* text, DWORD code);

constexpr std::size_t excerptLength = 60;  // bytes

// One place where the word was found.
struct Finding {
    DWORD line = 0;                        // counted from 1
    DWORD offset = 0;                      // bytes from the start of the file
    char excerpt[excerptLength + 1] = "";  // the line from there on
};

// The bytes of the block. The writer fills a finding first and counts it second, so that what is
// counted is complete; the block begins as zeros, with nothing posted.
struct Notes {
    static constexpr DWORD capacity = 500;

    std::atomic<DWORD> posted;    // how many of the findings stand
    std::atomic<DWORD> total;     // how many there were, also those that found no room
    std::atomic<DWORD> searched;  // bytes of the file so far
    std::atomic<DWORD> finished;  // 1: the writer has come to the end
    std::atomic<DWORD> taken;     // 1: the reader has read all
    std::array<Finding, capacity> findings;
};
static_assert(std::atomic<DWORD>::is_always_lock_free, "shared between processes");

class Board {
  public:
    // Makes a board of that name. Throws Error, also where one exists.
    void create(const std::string& name);
    // Waits for the board to be made, for `seconds` at most. Throws Error.
    void open(const std::string& name, int seconds);

    void post(const Finding& finding);
    void tellSearched(DWORD bytes) { notes_->searched = bytes; }
    Notes& notes() { return *notes_; }

  private:
    CJw32SharedMemory memory_;
    Notes* notes_ = nullptr;
};

// Waits until the flag is set. False: it was not within the seconds.
bool waitFor(const std::atomic<DWORD>& flag, int seconds);

}  // namespace blackboard
