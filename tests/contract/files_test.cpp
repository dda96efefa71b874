// The calls on files and directories, by the lines of files.txt.
#include "file_lines.h"

namespace {

using Files = FileLines;

TEST_F(Files, DoWhatTheLinesTell) {
    holdVectors(operations(), onWine(), true);
}

}  // namespace
