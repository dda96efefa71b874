// Files that other programs wrote: harmless faults are accepted, all others are found out.
#include <gmock/gmock.h>

#include <chrono>
#include <cstring>
#include <functional>

#include "churn.h"
#include "memory_device.h"

namespace {

using namespace compound;
using namespace compound_test;

constexpr std::size_t entrySizeOnDisk = 128;
constexpr std::uint32_t noLink = 0xFFFFFFFF, chainEnd = 0xFFFFFFFE;

// A file with the streams "a" (short), "b" (long) and the storage "s" with a stream "t".
std::string sample() {
    const auto disk = std::make_shared<Disk>();
    auto file = *File::create(deviceOf(disk), {});
    const std::string content(10000, 'x');
    Stream(*file, *file->createStream(File::root, u"a")).write(0, content.data(), 100);
    Stream(*file, *file->createStream(File::root, u"b")).write(0, content.data(), content.size());
    const auto storage = *file->createStorage(File::root, u"s");
    Stream(*file, *file->createStream(storage, u"t")).write(0, content.data(), 5000);
    file->close();
    return disk->bytes;
}

template <class T>
void put(std::string& bytes, std::size_t offset, T value) {
    std::memcpy(&bytes[offset], &value, sizeof value);
}

template <class T>
T get(const std::string& bytes, std::size_t offset) {
    T value;
    std::memcpy(&value, &bytes[offset], sizeof value);
    return value;
}

// Where the entry of that one-letter name is.
std::size_t entry(const std::string& bytes, char16_t name) {
    std::size_t offset = 1024;
    while (get<char16_t>(bytes, offset) != name || get<std::uint16_t>(bytes, offset + 64) != 4)
        offset += entrySizeOnDisk;
    return offset;
}

Result<std::unique_ptr<File>> openBytes(const std::string& bytes, bool writable = false) {
    const auto disk = std::make_shared<Disk>();
    disk->bytes = bytes;
    return File::open(deviceOf(disk), {.writable = writable});
}

struct Fault {
    const char* what;
    std::function<void(std::string&)> make;
    Error opened = Error::none;  // the answer of opening
    Error read = Error::none;    // of reading all of stream b, when the file opens
};

Error readAll(File& file, std::u16string_view name) {
    const auto id = file.find(File::root, name);
    if (!id) return id.error();
    std::string content(std::min<std::size_t>(file.info(*id)->size, 1 << 20), 0);
    Stream stream(file, *id);
    const auto got = stream.read(0, content.data(), content.size());
    if (!got) return got.error();
    return content == std::string(10000, 'x') ? Error::none : Error::io;
}

TEST(ForeignFiles, AreAcceptedOrRefused) {
    const auto fatOffset = [](const std::string& bytes, std::uint32_t sector) {
        return std::size_t{512} + 512 * get<std::uint32_t>(bytes, 76) + 4 * sector;
    };
    const auto startOf = [](const std::string& bytes, char16_t name) {
        return get<std::uint32_t>(bytes, entry(bytes, name) + 116);
    };
    const Fault faults[] = {
        {"ENDOFCHAIN instead of NOSTREAM",
         [&](auto& b) {
             for (const auto name : u"abt") {
                 for (std::size_t link = 68; name != 0 && link <= 76; link += 4) {
                     auto at = entry(b, name) + link;
                     if (get<std::uint32_t>(b, at) == noLink) put(b, at, chainEnd);
                 }
             }
         }},
        {"junk in the upper half of a size",
         [](auto& b) { put(b, entry(b, u'b') + 124, 0xDEADBEEF); }},
        {"bytes past the end", [](auto& b) { b += std::string(700, 'z'); }},
        {"another name of the root", [](auto& b) { put(b, 1024, u'X'); }},
        {"a red element", [](auto& b) { b[entry(b, u'b') + 67] = 0; }},
        {"no signature", [](auto& b) { b[0] = 'M'; }, Error::notCompound},
        {"an empty file", [](auto& b) { b.clear(); }, Error::notCompound},
        {"half a header", [](auto& b) { b.resize(300); }, Error::corrupt},
        {"sector shift 0", [](auto& b) { put(b, 30, std::uint16_t{0}); }, Error::corrupt},
        {"sector shift 31", [](auto& b) { put(b, 30, std::uint16_t{31}); }, Error::corrupt},
        {"version 5", [](auto& b) { put(b, 26, std::uint16_t{5}); }, Error::corrupt},
        {"big-endian", [](auto& b) { put(b, 28, std::uint16_t{0xFEFF}); }, Error::corrupt},
        {"a FAT larger than the file", [](auto& b) { put(b, 44, 0x7FFFFFFF); }, Error::corrupt},
        {"no FAT", [](auto& b) { put(b, 44, 0); }, Error::corrupt},
        {"a mini FAT larger than the file", [](auto& b) { put(b, 64, 0x7FFFFFFF); },
         Error::corrupt},
        {"a directory past the end", [](auto& b) { put(b, 48, 77777); }, Error::corrupt},
        {"a directory that goes in circles", [&](auto& b) { put(b, fatOffset(b, 1), 1); },
         Error::corrupt},
        {"an element that is its own sibling",
         [](auto& b) { put(b, entry(b, u'a') + 68, get<std::uint32_t>(b, 1024 + 76)); },
         Error::corrupt},
        {"a storage within itself",
         [](auto& b) { put(b, entry(b, u's') + 76, get<std::uint32_t>(b, 1024 + 76)); },
         Error::corrupt},
        {"a link past the directory", [](auto& b) { put(b, entry(b, u'a') + 72, 5000); },
         Error::corrupt},
        {"an unknown kind", [](auto& b) { b[entry(b, u'a') + 66] = 9; }, Error::corrupt},
        {"no root", [](auto& b) { b[1024 + 66] = 1; }, Error::corrupt},
        {"a size past the file", [](auto& b) { put(b, entry(b, u'b') + 120, 0x7FFFFFFF); },
         Error::none, Error::corrupt},
        {"a chain that ends early",
         [&](auto& b) { put(b, fatOffset(b, startOf(b, u'b') + 3), chainEnd); }, Error::none,
         Error::corrupt},
        {"a chain in circles",
         [&](auto& b) { put(b, fatOffset(b, startOf(b, u'b') + 3), startOf(b, u'b')); },
         Error::none, Error::corrupt},
        {"a chain past the table",
         [&](auto& b) { put(b, fatOffset(b, startOf(b, u'b') + 2), 0x00FFFFFF); }, Error::none,
         Error::corrupt},
        {"a start that is no sector", [](auto& b) { put(b, entry(b, u'b') + 116, 0xFFFFFFFC); },
         Error::none, Error::corrupt},
        {"a chain into a free sector",
         [&](auto& b) { put(b, fatOffset(b, startOf(b, u'b') + 2), 126); }, Error::none,
         Error::corrupt},
    };
    for (const auto& fault : faults) {
        auto bytes = sample();
        fault.make(bytes);
        auto file = openBytes(bytes);
        EXPECT_EQ(int(file.error()), int(fault.opened)) << fault.what;
        if (!file) continue;
        EXPECT_EQ(int(readAll(**file, u"b")), int(fault.read)) << fault.what;
    }
}

TEST(ForeignFiles, TheLastSectorNeedNotBePadded) {
    auto bytes = sample();
    const auto last = bytes.find_last_not_of('\0');
    bytes.resize(last + 1);
    auto file = openBytes(bytes);
    ASSERT_TRUE(file);
    EXPECT_EQ(readAll(**file, u"b"), Error::none);
}

TEST(ForeignFiles, NothingIsChangedWhereChainsCross) {
    auto bytes = sample();
    put(bytes, entry(bytes, u'b') + 116, get<std::uint32_t>(bytes, entry(bytes, u't') + 116));
    const auto disk = std::make_shared<Disk>();
    disk->bytes = bytes;
    auto file = *File::open(deviceOf(disk), {});
    EXPECT_EQ(file->remove(*file->find(File::root, u"b")), Error::corrupt);
    EXPECT_EQ(file->createStream(File::root, u"new").error(), Error::corrupt);
    file.reset();
    EXPECT_TRUE(disk->bytes == bytes);
}

// Makes the tree of the root a list of red elements in no order, as some programs write it.
void makeList(std::string& bytes) {
    const auto next = [&](std::uint32_t sector) {
        const auto page = get<std::uint32_t>(bytes, 76 + 4 * (sector / 128));
        return get<std::uint32_t>(bytes, (std::size_t{page} + 1) * 512 + 4 * (sector % 128));
    };
    std::uint32_t entry = 0;
    std::size_t link = 1024 + 76;
    for (auto sector = get<std::uint32_t>(bytes, 48); sector != chainEnd; sector = next(sector)) {
        for (std::size_t i = 0; i < 512; i += entrySizeOnDisk, ++entry) {
            const auto offset = (std::size_t{sector} + 1) * 512 + i;
            if (bytes[offset + 66] != 2) continue;
            put(bytes, link, entry);
            bytes[offset + 67] = 0;
            put(bytes, offset + 68, noLink);
            link = offset + 72;
            put(bytes, link, noLink);
        }
    }
}

TEST(ForeignFiles, ATreeOfAnyShapeIsFastAndMadeGoodByAChange) {
    constexpr int count = 20000;
    const auto nameOf = [](int number) {
        const auto digits = std::to_string(100000 + number);
        return std::u16string(digits.begin(), digits.end());
    };
    const auto disk = std::make_shared<Disk>();
    auto file = *File::create(deviceOf(disk), {});
    for (int i = 0; i < count; ++i)
        EXPECT_TRUE(file->createStream(File::root, nameOf(i * 7919 % count)));
    ASSERT_EQ(file->close(), Error::none);
    makeList(disk->bytes);
    const auto start = std::chrono::steady_clock::now();
    file = *File::open(deviceOf(disk), {});
    EXPECT_EQ(file->children(File::root)->size(), std::size_t{count});
    for (int i = 0; i < count; ++i) EXPECT_TRUE(file->find(File::root, nameOf(i))) << i;
    EXPECT_TRUE(file->createStream(File::root, u"one more"));
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    ASSERT_EQ(file->close(), Error::none);
    const auto [fault, contents] = check(disk->bytes, After::call);
    EXPECT_EQ(fault, "");
    EXPECT_EQ(contents.size(), std::size_t{count} + 1);
}

TEST(ForeignFiles, NamesAreComparedByLengthAndUpperCase) {
    const auto disk = std::make_shared<Disk>();
    auto file = *File::create(deviceOf(disk), {});
    for (const auto* const name : {u"bb", u"\u00DF", u"A", u"\u00FC", u"\u044F", u"ss", u"z"})
        EXPECT_TRUE(file->createStream(File::root, name));
    for (const auto* const name : {u"BB", u"a", u"\u00DC", u"\u042F"})
        EXPECT_EQ(file->createStream(File::root, name).error(), Error::exists);
    const std::u16string longest(31, u'n');
    EXPECT_TRUE(file->createStream(File::root, longest));
    for (const auto& name :
         {std::u16string(), longest + u'n', std::u16string(u"a/b"), std::u16string(u"a\\"),
          std::u16string(u":"), std::u16string(u"!"), std::u16string(1, u'\0')})
        EXPECT_EQ(file->createStream(File::root, name).error(), Error::invalidName);
    std::u16string order;
    for (const auto& id : *file->children(File::root)) order += file->info(id)->name + u' ';
    EXPECT_EQ(order, u"A z \u00FC \u00DF \u044F bb ss " + longest + u' ');
}

}  // namespace
