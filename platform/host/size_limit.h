// The host's limit for the size of a file, as an answer in the place of the end of the process.
#pragma once

namespace machine {

// To be called before anything that can make a file longer. Where the application leaves SIGXFSZ at
// its default, which ends the process, an empty handler takes it from now on, so that the call gives
// EFBIG. A handler does not go over to a program that is started. An application that handles,
// ignores or blocks the signal keeps what it has.
void answerSizeLimit();

}  // namespace machine
