// Feeds bytes to the compound-file engine as a file: reads all of it, changes it, and reads it again.
//
// It has the entry of libFuzzer: with clang, `-fsanitize=fuzzer` makes a program of it alone. In the
// ordinary suite `mutants.cpp` calls it with a fixed set of files.
#include <cstdlib>
#include <vector>

#include "compound/compound_file.h"
#include "compound/memory_device.h"

namespace {

using namespace compound;

// Walks all storages and reads the start and the end of each stream.
void readAll(File& file) {
    std::vector<ElementId> storages{File::root};
    std::vector<char> bytes(8192);
    while (!storages.empty()) {
        const auto children = file.children(storages.back());
        storages.pop_back();
        if (!children) continue;
        for (const auto& id : *children) {
            const auto info = file.info(id);
            if (!info) std::abort();
            if (info->kind != Kind::stream) {
                storages.push_back(id);
                continue;
            }
            Stream stream(file, id);
            static_cast<void>(stream.read(0, bytes.data(), bytes.size()));
            static_cast<void>(stream.read(info->size - 1, bytes.data(), bytes.size()));
        }
    }
}

// Changes an element of each kind, and makes new ones.
void change(File& file) {
    const std::vector<char> bytes(6000, 'x');
    const auto children = file.children(File::root);
    for (std::size_t i = 0; children && i < children->size() && i < 8; ++i) {
        const auto id = (*children)[i];
        Stream stream(file, id);
        switch (i % 4) {
            case 0:
                static_cast<void>(stream.write(5000, bytes.data(), bytes.size()));
                break;
            case 1:
                static_cast<void>(stream.resize(10));
                break;
            case 2:
                static_cast<void>(file.remove(id));
                break;
            default:
                static_cast<void>(file.rename(id, u"renamed"));
                break;
        }
    }
    for (const auto* const name : {u"one", u"two", u"three"}) {
        const auto id = file.createStream(File::root, name);
        if (id) static_cast<void>(Stream(file, *id).write(0, bytes.data(), bytes.size()));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto disk = std::make_shared<compound_test::Disk>();
    disk->bytes.assign(reinterpret_cast<const char*>(data), size);
    auto file = File::open(compound_test::deviceOf(disk), {});
    if (!file) return 0;
    readAll(**file);
    change(**file);
    readAll(**file);
    if ((*file)->close() != Error::none) return 0;
    // What the engine has written it accepts.
    file = File::open(compound_test::deviceOf(disk), {.writable = false});
    if (!file) std::abort();
    readAll(**file);
    return 0;
}
