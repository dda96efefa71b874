// The board over the library's named shared memory.
#include "board.h"

#include <new>

namespace blackboard {

namespace {

constexpr DWORD pause = 20;  // milliseconds

// Tries again and again until the seconds are over.
template <class Attempt>
bool within(int seconds, Attempt attempt) {
    for (int left = seconds * 1000; left > 0; left -= static_cast<int>(pause)) {
        if (attempt()) return true;
        Sleep(pause);
    }
    return attempt();
}

}  // namespace

std::string because(const std::string& what, const char* text, DWORD code) {
    std::string reason(text);
    reason.erase(reason.find_last_not_of("\r\n ") + 1);
    // Conditions of the library's own, as an empty file, have a text and no number.
    constexpr DWORD noNumber = 0xFFFFFFFF;
    return what + ": " + reason + (code == noNumber ? "" : " (" + std::to_string(code) + ")");
}

void Board::create(const std::string& name) {
    DWORD code = 0;
    char text[256] = "";
    void* const view = memory_.Create(name.c_str(), sizeof(Notes), &code, text, sizeof text);
    // Without a code it is the library's own condition that was not met.
    if (view == nullptr && code == 0) throw Error("the board '" + name + "' exists already");
    if (view == nullptr) throw Error(because("cannot make the board '" + name + "'", text, code));
    notes_ = new (view) Notes;
}

void Board::open(const std::string& name, int seconds) {
    DWORD code = 0;
    char text[256] = "";
    void* view = nullptr;
    within(seconds, [&] {
        view = memory_.Open(name.c_str(), &code, text, sizeof text);
        return view != nullptr || code != ERROR_FILE_NOT_FOUND;
    });
    if (view == nullptr) throw Error(because("there is no board '" + name + "'", text, code));
    notes_ = static_cast<Notes*>(view);
}

void Board::post(const Finding& finding) {
    ++notes_->total;
    const DWORD index = notes_->posted;
    if (index == Notes::capacity) return;
    notes_->findings[index] = finding;
    notes_->posted = index + 1;
}

bool waitFor(const std::atomic<DWORD>& flag, int seconds) {
    return within(seconds, [&] { return flag != 0; });
}

}  // namespace blackboard
