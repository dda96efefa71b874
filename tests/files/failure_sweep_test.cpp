// Every platform call of the file and directory operations fails once.
#include "support/failure_sweep.h"

#include <jw32/directories.h>
#include <jw32/files.h>

#include "support/scratch_drives.h"

namespace {

// What the operations find: a folder of their own with a file, an open file and a directory.
struct Scene {
    std::string folder, file, target, otherDrive;
    std::shared_ptr<void> open;
};

struct Operation {
    const char* name;
    std::function<Outcome(const Scene&, Triple&)> act;
    std::vector<std::string> passedOver = {};
};

Outcome owned(HANDLE result, BOOL (*close)(HANDLE)) {
    if (result == INVALID_HANDLE_VALUE) return {true};
    return {false, std::shared_ptr<void>(result, close)};
}

const Operation operations[] = {
    {"Jw32FileRead",
     [](const Scene& s, Triple& t) {
         char byte;
         return Outcome{!t.of(Jw32FileRead, s.open.get(), &byte, 1)};
     }},
    {"Jw32FileWrite",
     [](const Scene& s, Triple& t) { return Outcome{!t.of(Jw32FileWrite, s.open.get(), "x", 1)}; }},
    {"Jw32FileSeek",
     [](const Scene& s, Triple& t) { return Outcome{!t.of(Jw32FileSeek, s.open.get(), 3)}; }},
    {"Jw32FileSeekEnd",
     [](const Scene& s, Triple& t) { return Outcome{!t.of(Jw32FileSeekEnd, s.open.get())}; }},
    {"Jw32FileSize of a handle",
     [](const Scene& s, Triple& t) {
         return Outcome{Jw32FileSize(s.open.get(), &t.code, t.text, t.size) == -1};
     }},
    {"Jw32FileSize of a name",
     [](const Scene& s, Triple& t) {
         return Outcome{Jw32FileSize(s.file.c_str(), &t.code, t.text, t.size) == -1};
     },
     {"CloseHandle"}},
    {"Jw32FileCreate",
     [](const Scene& s, Triple& t) {
         return owned(t.of(Jw32FileCreate, s.target.c_str(), GENERIC_WRITE, CREATE_NEW, 0, 0),
                      CloseHandle);
     }},
    {"Jw32FileOpen",
     [](const Scene& s, Triple& t) {
         return owned(t.of(Jw32FileOpen, s.file.c_str(), GENERIC_READ, OPEN_EXISTING, 0, 0),
                      CloseHandle);
     }},
    {"Jw32FileFind",
     [](const Scene& s, Triple& t) { return Outcome{!t.of(Jw32FileFind, s.file.c_str())}; },
     {"FindClose"}},
    {"Jw32FileHide",
     [](const Scene& s, Triple& t) { return Outcome{!t.of(Jw32FileHide, s.file.c_str())}; }},
    {"Jw32FileMove on one drive",
     [](const Scene& s, Triple& t) {
         return Outcome{!t.of(Jw32FileMove, s.file.c_str(), s.target.c_str())};
     },
     // Where the drives seem to differ, the file is copied.
     {"FindClose", "PathAddBackslashA", "PathIsSameRootW"}},
    {"Jw32FileMove between drives",
     [](const Scene& s, Triple& t) {
         return Outcome{!t.of(Jw32FileMove, s.file.c_str(), s.otherDrive.c_str())};
     },
     {"FindClose", "PathAddBackslashA", "PathIsSameRootW"}},
    {"Jw32DirectoryFind",
     [](const Scene& s, Triple& t) {
         WIN32_FIND_DATAA record;
         return owned(t.of(Jw32DirectoryFind, s.folder.c_str(), &record), FindClose);
     },
     {"PathRemoveBackslashA"}},
    {"Jw32DirectoryExist",
     [](const Scene& s, Triple& t) { return Outcome{!t.of(Jw32DirectoryExist, s.folder.c_str())}; },
     {"PathRemoveBackslashA", "FindClose"}},
    // The levels above the last stand already.
    {"Jw32DirectoryCreate",
     [](const Scene& s, Triple& t) {
         return Outcome{!t.of(Jw32DirectoryCreate, s.target.c_str())};
     },
     {"CreateDirectoryW#1", "CreateDirectoryW#2"}},
    {"Jw32DirectoryCreateAttr",
     [](const Scene& s, Triple& t) {
         return Outcome{!t.of(Jw32DirectoryCreateAttr, s.target.c_str(), FILE_ATTRIBUTE_HIDDEN, 0)};
     },
     {"CreateDirectoryW#1", "CreateDirectoryW#2", "GetFileAttributesA", "SetFileAttributesA"}},
};

class FileFailures : public ScratchDrives {
  protected:
    // Each in a folder of its own: what a failing release leaves open disturbs nobody.
    Scene scene() {
        const std::string name = "scene" + std::to_string(++scenes_);
        Jw32DirectoryCreate(c(name).c_str());
        Scene result{c(name), c(name + "\\file"), c(name + "\\target"), d(name), nullptr};
        write(result.file, "content");
        write(c(name + "\\open"), "content");
        result.open.reset(Jw32FileOpen(c(name + "\\open").c_str(), GENERIC_READ | GENERIC_WRITE,
                                       OPEN_EXISTING, 0, 0),
                          CloseHandle);
        return result;
    }

  private:
    unsigned scenes_ = 0;
};

TEST_F(FileFailures, AreReportedAndLeaveNothingOpen) {
    for (const auto& operation : operations) {
        const auto arrange = [&] {
            return [&operation, scene = scene()](Triple& triple) {
                return operation.act(scene, triple);
            };
        };
        sweepFailures({operation.name, arrange, operation.passedOver});
    }
}

}  // namespace
