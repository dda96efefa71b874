// The limit of a file's size (RLIMIT_FSIZE). The host ends a process that writes beyond it by a signal,
// unless the signal is handled: then the write fails with EFBIG, which has a code here.
#include <csignal>

namespace {

void goOn(int) {}

// An empty handler and not SIG_IGN, which the programs that this one starts would inherit. What the
// application has set stays.
const bool limitIsAnswered = [] {
    struct sigaction present {};
    if (::sigaction(SIGXFSZ, nullptr, &present) != 0 || present.sa_handler != SIG_DFL) return false;
    present.sa_handler = goOn;
    present.sa_flags = SA_RESTART;
    return ::sigaction(SIGXFSZ, &present, nullptr) == 0;
}();

}  // namespace
