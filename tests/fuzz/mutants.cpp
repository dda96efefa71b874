// Runs the harness over a fixed set of damaged compound files, or over the files that are named.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "compound/compound_file.h"
#include "compound/memory_device.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

using namespace compound;

std::string sound(int version, int elements) {
    const auto disk = std::make_shared<compound_test::Disk>();
    auto file = *File::create(compound_test::deviceOf(disk), {.version = version});
    const std::string content(12000, 'c');
    auto storage = File::root;
    for (int i = 0; i < elements; ++i) {
        const auto digits = std::to_string(i * 7919 % 1000);
        const std::u16string name(digits.begin(), digits.end());
        if (i % 5 == 4) {
            const auto made = file->createStorage(i % 2 == 0 ? storage : File::root, name);
            if (made) storage = *made;
        } else if (const auto stream = file->createStream(storage, name)) {
            Stream(*file, *stream)
                .write(0, content.data(), static_cast<std::size_t>(i * 977 % 12000));
        }
    }
    file->close();
    return disk->bytes;
}

// Damages numbers where a table or an entry has them, and now and then the length.
std::string mutant(std::string bytes, std::minstd_rand& random) {
    const std::uint32_t values[] = {0,          1,          2,          0xFFFFFFFF, 0xFFFFFFFE,
                                    0xFFFFFFFD, 0xFFFFFFFC, 0xFFFFFFFA, 0x7FFFFFFF, 0x10000};
    for (auto changes = 1 + random() % 6; changes > 0; --changes) {
        const bool header = random() % 3 == 0;
        const auto offset = random() % (header ? 128 : bytes.size() - 4) / 4 * 4;
        std::uint32_t value = random() % 2 == 0 ? values[random() % std::size(values)]
                                                : static_cast<std::uint32_t>(random() % 300);
        if (random() % 4 == 0)
            bytes[offset + random() % 4] = static_cast<char>(value);
        else
            std::memcpy(&bytes[offset], &value, sizeof value);
    }
    if (random() % 16 == 0) bytes.resize(random() % bytes.size());
    return bytes;
}

void run(const std::string& bytes) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        std::ifstream file(argv[i], std::ios::binary);
        run({std::istreambuf_iterator<char>(file), {}});
    }
    if (argc > 1) return 0;
    std::minstd_rand random(1);
    for (const auto& seed : {sound(3, 3), sound(3, 12), sound(3, 40), sound(4, 20)}) {
        run(seed);
        for (int i = 0; i < 1500; ++i) run(mutant(seed, random));
    }
    std::puts("no mutant did harm");
    return 0;
}
