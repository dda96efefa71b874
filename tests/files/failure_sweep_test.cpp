// Every platform call of the file and directory operations fails once.
#include "support/failure_sweep.h"

#include <jw32/directories.h>
#include <jw32/files.h>

#include "support/scratch_drives.h"

namespace {

class FileFailures : public ScratchDrives {
  protected:
    using Act = std::function<int(Triple&)>;  // gives 0 for a failure
    using Calls = std::vector<std::string>;

    // Each run has a folder of its own with a file, and an open file.
    void sweep(const char* name, const Act& act, const Calls& passedOver = {}) {
        const auto arrange = [&] {
            ++runs;
            Jw32DirectoryCreate(in("").c_str());
            write(in("file"), "content");
            open.reset(Jw32FileOpen(in("open").c_str(), GENERIC_ALL, CREATE_NEW, 0, 0),
                       CloseHandle);
            return [&act](Triple& t) { return Outcome{act(t) == 0}; };
        };
        sweepFailures({name, arrange, passedOver});
    }
    std::string in(const char* name) const { return c(std::to_string(runs) + "\\" + name); }

    std::shared_ptr<void> open;
    unsigned runs = 0;
};

TEST_F(FileFailures, AreReportedAndLeaveNothingOpen) {
    const auto given = [](void* handle, BOOL (*release)(HANDLE)) {
        release(handle);
        return handle != INVALID_HANDLE_VALUE;
    };
    const auto create = [&](auto& t) {
        return given(t.of(Jw32FileCreate, in("new"), GENERIC_WRITE, CREATE_NEW, 0, 0), CloseHandle);
    };
    const auto reopen = [&](auto& t) {
        return given(t.of(Jw32FileOpen, in("file"), GENERIC_READ, OPEN_EXISTING, 0, 0),
                     CloseHandle);
    };
    const auto find = [&](auto& t) {
        WIN32_FIND_DATAA record;
        return given(t.of(Jw32DirectoryFind, c(), &record), FindClose);
    };
    const auto sizeOf = [](auto which, auto& t) {
        return Jw32FileSize(which, &t.code, t.text, t.size) != -1;
    };
    const auto move = [&](auto& t) { return t.of(Jw32FileMove, in("file"), in("new")); };
    const auto copy = [&](auto& t) { return t.of(Jw32FileMove, in("file"), d("new")); };
    const auto make = [&](auto& t) { return t.of(Jw32DirectoryCreateAttr, in("new"), 2, 0); };
    // Where the drives seem to differ, the file is copied.
    const Calls ofMove{"FindClose", "PathAddBackslashA", "PathIsSameRootW"};
    sweep("Jw32FileRead", [&](auto& t) { return t.of(Jw32FileRead, open.get(), nullptr, 0); });
    sweep("Jw32FileWrite", [&](auto& t) { return t.of(Jw32FileWrite, open.get(), "", 0); });
    sweep("Jw32FileSeek", [&](auto& t) { return t.of(Jw32FileSeek, open.get(), 3); });
    sweep("Jw32FileSeekEnd", [&](auto& t) { return t.of(Jw32FileSeekEnd, open.get()); });
    sweep("Jw32FileSize of a handle", [&](auto& t) { return sizeOf(open.get(), t); });
    sweep("Jw32FileSize of a name", [&](auto& t) { return sizeOf(in("file").c_str(), t); },
          {"CloseHandle"});
    sweep("Jw32FileCreate", create, {"CloseHandle"});
    sweep("Jw32FileOpen", reopen, {"CloseHandle"});
    sweep("Jw32FileFind", [&](auto& t) { return t.of(Jw32FileFind, in("file")); }, {"FindClose"});
    sweep("Jw32FileHide", [&](auto& t) { return t.of(Jw32FileHide, in("file")); });
    sweep("Jw32FileMove on one drive", move, ofMove);
    sweep("Jw32FileMove between drives", copy, ofMove);
    sweep("Jw32DirectoryFind", find, {"PathRemoveBackslashA", "FindClose"});
    sweep("Jw32DirectoryExist", [&](auto& t) { return t.of(Jw32DirectoryExist, c()); },
          {"PathRemoveBackslashA", "FindClose"});
    // The levels above the last stand already.
    sweep("Jw32DirectoryCreate", [&](auto& t) { return t.of(Jw32DirectoryCreate, in("new")); },
          {"CreateDirectoryW#1", "CreateDirectoryW#2"});
    sweep("Jw32DirectoryCreateAttr", make,
          {"CreateDirectoryW#1", "CreateDirectoryW#2", "GetFileAttributesA", "SetFileAttributesA"});
}

}  // namespace
