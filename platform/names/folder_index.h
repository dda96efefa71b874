// Names of the host's folders, found without regard to case and without reading the folder again.
//
// Folders that were read are remembered, and the host's notifications (inotify) keep what is
// remembered true. The host queues a change before the call that made it returns, so that a queue
// which is emptied before each use knows of every change that anyone can know of. A folder is told
// by its device and inode, whatever its path is at the moment.
//
// At most 64 folders and 64 MiB (some 500,000 names) are remembered, those used last. Nothing is
// remembered of a folder larger than that, of file systems that other machines or programs can
// change (network, FUSE), where the host gives no more watches or descriptors, and where
// notifications were lost: then each look reads the folder. Nothing is handed on to a forked child.
//
// All threads may call at the same time. Nothing is thrown but std::bad_alloc from texts of the
// length of a name.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace machine {

// The name in the folder that equals the component but for case, the very same one first, else the
// one whose short form does; empty: there is none. Unset, with errno set: the folder cannot be read.
std::optional<std::string> nameInFolder(int folder, std::u16string_view component);

}  // namespace machine
