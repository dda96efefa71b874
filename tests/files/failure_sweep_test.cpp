// Every platform call of the file and directory operations fails once.
#include "support/failure_sweep.h"

#include <jw32/directories.h>
#include <jw32/files.h>

#include "support/scratch_drives.h"

namespace {

// What the operations find: a folder of their own with a file, and an open file.
struct Scene {
    std::string folder, file, target, otherDrive;
    std::shared_ptr<void> open;
};

struct Operation {
    const char* name;
    std::function<int(const Scene&, Triple&)> act;  // gives 0 for a failure
    std::vector<std::string> passedOver = {};
};

const Operation operations[] = {
    {"Jw32FileRead", [](auto& s, auto& t) { return t.of(Jw32FileRead, s.open.get(), nullptr, 0); }},
    {"Jw32FileWrite", [](auto& s, auto& t) { return t.of(Jw32FileWrite, s.open.get(), "", 0); }},
    {"Jw32FileSeek", [](auto& s, auto& t) { return t.of(Jw32FileSeek, s.open.get(), 3); }},
    {"Jw32FileSeekEnd", [](auto& s, auto& t) { return t.of(Jw32FileSeekEnd, s.open.get()); }},
    {"Jw32FileSize",
     [](auto& s, auto& t) { return Jw32FileSize(s.file.c_str(), &t.code, t.text, t.size) != -1; },
     {"CloseHandle"}},
    {"Jw32FileOpen",
     [](auto& s, auto& t) {
         void* const file = t.of(Jw32FileOpen, s.target, GENERIC_WRITE, CREATE_NEW, 0, 0);
         CloseHandle(file);
         return file != INVALID_HANDLE_VALUE;
     },
     {"CloseHandle"}},
    {"Jw32FileFind", [](auto& s, auto& t) { return t.of(Jw32FileFind, s.file); }, {"FindClose"}},
    {"Jw32FileHide", [](auto& s, auto& t) { return t.of(Jw32FileHide, s.file); }},
    // Where the drives seem to differ, the file is copied.
    {"Jw32FileMove on one drive",
     [](auto& s, auto& t) { return t.of(Jw32FileMove, s.file, s.target); },
     {"FindClose", "PathAddBackslashA", "PathIsSameRootW"}},
    {"Jw32FileMove between drives",
     [](auto& s, auto& t) { return t.of(Jw32FileMove, s.file, s.otherDrive); },
     {"FindClose", "PathAddBackslashA", "PathIsSameRootW"}},
    {"Jw32DirectoryExist",
     [](auto& s, auto& t) { return t.of(Jw32DirectoryExist, s.folder); },
     {"PathRemoveBackslashA", "FindClose"}},
    // The levels above the last stand already.
    {"Jw32DirectoryCreateAttr",
     [](auto& s, auto& t) { return t.of(Jw32DirectoryCreateAttr, s.target, 2, 0); },
     {"CreateDirectoryW#1", "CreateDirectoryW#2", "GetFileAttributesA", "SetFileAttributesA"}},
};

class FileFailures : public ScratchDrives {
  protected:
    // Each in a folder of its own: what a failing release leaves open disturbs nobody.
    Scene scene() {
        const auto name = std::to_string(++scenes_);
        Jw32DirectoryCreate(c(name).c_str());
        Scene result{c(name), c(name + "\\file"), c(name + "\\target"), d(name), nullptr};
        write(result.file, "content");
        const auto open = c(name + "\\open");
        result.open.reset(Jw32FileOpen(open.c_str(), GENERIC_ALL, CREATE_NEW, 0, 0), CloseHandle);
        return result;
    }

  private:
    unsigned scenes_ = 0;
};

TEST_F(FileFailures, AreReportedAndLeaveNothingOpen) {
    for (const auto& operation : operations) {
        const auto arrange = [&] {
            return [act = operation.act, scene = scene()](Triple& triple) {
                return Outcome{act(scene, triple) == 0};
            };
        };
        sweepFailures({operation.name, arrange, operation.passedOver});
    }
}

}  // namespace
