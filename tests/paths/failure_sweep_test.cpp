// Every platform call of the operations for free space and of temporary files fails once.
#include "support/failure_sweep.h"

#include <jw32/free_space.h>
#include <jw32/temporary_files.h>

#include "support/kept_modules.h"
#include "support/scratch_drives.h"

namespace {

class FreeSpaceFailures : public KeepsModules {};

TEST_F(FreeSpaceFailures, AreReported) {
    const auto inBytes = [](Triple& t) {
        ULARGE_INTEGER bytes;
        return Outcome{!Jw32FreeDiskSpace("C:\\", &bytes, &t.code, t.text, t.size)};
    };
    const auto inMegabytes = [](Triple& t) {
        DWORD megabytes;
        return Outcome{!Jw32FreeDiskSpaceMB("C:\\", &megabytes, &t.code, t.text, t.size)};
    };
    Triple first;  // the lookup is made once and leaves its module loaded
    ASSERT_FALSE(inBytes(first).failed);
    sweepFailures({"Jw32FreeDiskSpace", [&] { return inBytes; }, {}, {{"_splitpath_s", 0}}});
    sweepFailures({"Jw32FreeDiskSpaceMB", [&] { return inMegabytes; }});
}

class TemporaryFileFailures : public ScratchDrives {};

TEST_F(TemporaryFileFailures, AreReportedAndLeaveNothingOpen) {
    const auto create = [this](Triple& t) {
        void* const file =
            Jw32CreateTempFile(c().c_str(), "jwt", GENERIC_WRITE, CREATE_NEW,
                               FILE_FLAG_DELETE_ON_CLOSE, 0, &t.code, t.text, t.size);
        if (file == INVALID_HANDLE_VALUE) return Outcome{true};
        return Outcome{false, std::shared_ptr<void>(file, CloseHandle)};
    };
    // Without a name, the platform refuses the empty one.
    sweepFailures(
        {"Jw32CreateTempFile", [&] { return create; }, {}, {{"_tempnam", ERROR_PATH_NOT_FOUND}}});
}

}  // namespace
