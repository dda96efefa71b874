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
     [](const Scene& scene, Triple& t) {
         char byte;
         return Outcome{!Jw32FileRead(scene.open.get(), &byte, 1, &t.code, t.text, t.size)};
     }},
    {"Jw32FileWrite",
     [](const Scene& scene, Triple& t) {
         return Outcome{!Jw32FileWrite(scene.open.get(), "x", 1, &t.code, t.text, t.size)};
     }},
    {"Jw32FileSeek",
     [](const Scene& scene, Triple& t) {
         return Outcome{!Jw32FileSeek(scene.open.get(), 3, &t.code, t.text, t.size)};
     }},
    {"Jw32FileSeekEnd",
     [](const Scene& scene, Triple& t) {
         return Outcome{!Jw32FileSeekEnd(scene.open.get(), &t.code, t.text, t.size)};
     }},
    {"Jw32FileSize of a handle",
     [](const Scene& scene, Triple& t) {
         return Outcome{Jw32FileSize(scene.open.get(), &t.code, t.text, t.size) == -1};
     }},
    {"Jw32FileSize of a name",
     [](const Scene& scene, Triple& t) {
         return Outcome{Jw32FileSize(scene.file.c_str(), &t.code, t.text, t.size) == -1};
     },
     {"CloseHandle"}},
    {"Jw32FileCreate",
     [](const Scene& scene, Triple& t) {
         return owned(Jw32FileCreate(scene.target.c_str(), GENERIC_WRITE, CREATE_NEW, 0, 0, &t.code,
                                     t.text, t.size),
                      CloseHandle);
     }},
    {"Jw32FileOpen",
     [](const Scene& scene, Triple& t) {
         return owned(Jw32FileOpen(scene.file.c_str(), GENERIC_READ, OPEN_EXISTING, 0, 0, &t.code,
                                   t.text, t.size),
                      CloseHandle);
     }},
    {"Jw32FileFind",
     [](const Scene& scene, Triple& t) {
         return Outcome{!Jw32FileFind(scene.file.c_str(), &t.code, t.text, t.size)};
     },
     {"FindClose"}},
    {"Jw32FileHide",
     [](const Scene& scene, Triple& t) {
         return Outcome{!Jw32FileHide(scene.file.c_str(), &t.code, t.text, t.size)};
     }},
    {"Jw32FileMove on one drive",
     [](const Scene& scene, Triple& t) {
         return Outcome{
             !Jw32FileMove(scene.file.c_str(), scene.target.c_str(), &t.code, t.text, t.size)};
     },
     // Where the drives seem to differ, the file is copied.
     {"FindClose", "PathAddBackslashA", "PathIsSameRootW"}},
    {"Jw32FileMove between drives",
     [](const Scene& scene, Triple& t) {
         return Outcome{
             !Jw32FileMove(scene.file.c_str(), scene.otherDrive.c_str(), &t.code, t.text, t.size)};
     },
     {"FindClose", "PathAddBackslashA", "PathIsSameRootW"}},
    {"Jw32DirectoryFind",
     [](const Scene& scene, Triple& t) {
         WIN32_FIND_DATAA record;
         return owned(Jw32DirectoryFind(scene.folder.c_str(), &record, &t.code, t.text, t.size),
                      FindClose);
     },
     {"PathRemoveBackslashA"}},
    {"Jw32DirectoryExist",
     [](const Scene& scene, Triple& t) {
         return Outcome{!Jw32DirectoryExist(scene.folder.c_str(), &t.code, t.text, t.size)};
     },
     {"PathRemoveBackslashA", "FindClose"}},
    // The levels above the last stand already.
    {"Jw32DirectoryCreate",
     [](const Scene& scene, Triple& t) {
         return Outcome{!Jw32DirectoryCreate(scene.target.c_str(), &t.code, t.text, t.size)};
     },
     {"CreateDirectoryW#1", "CreateDirectoryW#2"}},
    {"Jw32DirectoryCreateAttr",
     [](const Scene& scene, Triple& t) {
         return Outcome{!Jw32DirectoryCreateAttr(scene.target.c_str(), FILE_ATTRIBUTE_HIDDEN, 0,
                                                 &t.code, t.text, t.size)};
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
