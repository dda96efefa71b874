// Every platform call of the operations for free space fails once.
#include "support/failure_sweep.h"

#include <jw32/free_space.h>

#include "support/kept_modules.h"

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
    sweepFailures({"Jw32FreeDiskSpace", [&] { return inBytes; }, {}, {"_splitpath_s"}});
    sweepFailures({"Jw32FreeDiskSpaceMB", [&] { return inMegabytes; }});
}

}  // namespace
