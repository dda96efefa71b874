// A compound file: storages and streams in one file (MS-CFB, versions 3 and 4).
#include "compound/compound_file.h"

#include "compound/engine.h"

namespace compound {
namespace {

constexpr std::u16string_view rootName = u"Root Entry";

// The FAT in the first sector, the directory in the second, and the header last.
void format(Medium& medium, Header& header) {
    const auto size = medium.sectorSize();
    medium.truncate(0);
    std::vector<std::byte> sector(size, std::byte{0xFF});
    store(sector.data(), fatSector);
    store(sector.data() + sizeof(Sector), endOfChain);
    medium.write(medium.offsetOf(0), sector.data(), size);
    Elements elements;
    Element root, clear;
    root.kind = Kind::root;
    root.setName(rootName);
    for (std::size_t at = 0; at < size; at += entrySize) {
        const auto entry = encodeEntry(elements, at == 0 ? root : clear);
        std::copy(entry.begin(), entry.end(), sector.begin() + static_cast<std::ptrdiff_t>(at));
    }
    medium.write(medium.offsetOf(1), sector.data(), size);
    header.setSlot(0, 0);
    header.setFatSectors(1);
    header.setFirstDirectory(1);
    if (header.version() == 4) header.setDirectorySectors(1);
    medium.order();
    medium.writeZeros(0, size);
    header.write(medium);
}

}  // namespace

File::File(std::unique_ptr<Engine> engine) : engine_(std::move(engine)) {}

File::~File() {
    close();
}

Result<std::unique_ptr<File>> File::create(std::unique_ptr<Device> device, const Options& options) {
    return guarded([&] {
        if (options.version != 3 && options.version != 4) throw Failure{Error::invalidArgument};
        Medium medium(std::move(device), options.durability);
        auto header = Header::fresh(options.version);
        medium.setSectorSize(header.sectorSize());
        format(medium, header);
        auto engine = std::make_unique<Engine>(std::move(medium), header, options);
        engine->checked = true;
        return std::unique_ptr<File>(new File(std::move(engine)));
    });
}

Result<std::unique_ptr<File>> File::open(std::unique_ptr<Device> device, const Options& options) {
    return guarded([&] {
        Medium medium(std::move(device), options.durability);
        const auto header = Header::read(medium);
        auto engine = std::make_unique<Engine>(std::move(medium), header, options);
        return std::unique_ptr<File>(new File(std::move(engine)));
    });
}

int File::version() const {
    return engine_->header.version();
}

bool File::exists(ElementId id) const {
    return guardedError([&] { engine_->at(id); }) == Error::none;
}

Result<Info> File::info(ElementId id) const {
    return guarded([&] {
        const auto& element = engine_->directory[engine_->at(id)];
        return Info{std::u16string(element.name()),
                    element.kind,
                    element.kind == Kind::stream ? element.size : 0,
                    element.classId,
                    element.stateBits,
                    element.created,
                    element.modified};
    });
}

Result<ElementId> File::find(ElementId storage, std::u16string_view name) const {
    return guarded([&] {
        const auto found = engine_->directory.tree(engine_->storageAt(storage)).find(name);
        if (found == noElement) throw Failure{Error::notFound};
        return engine_->name(found);
    });
}

Result<std::vector<ElementId>> File::children(ElementId storage) const {
    return guarded([&] {
        const auto index = engine_->storageAt(storage);
        const auto tree = engine_->directory.tree(index);
        std::vector<ElementId> children;
        children.reserve(engine_->directory[index].children);
        for (auto id = tree.first(); id != noElement; id = tree.next(id))
            children.push_back(engine_->name(id));
        return children;
    });
}

Result<ElementId> File::following(ElementId storage, std::u16string_view name) const {
    return guarded([&] {
        const auto found = engine_->directory.tree(engine_->storageAt(storage)).following(name);
        if (found == noElement) throw Failure{Error::notFound};
        return engine_->name(found);
    });
}

Result<ElementId> File::parent(ElementId id) const {
    return guarded([&] {
        const auto index = engine_->at(id);
        if (index == rootId) throw Failure{Error::notFound};
        return engine_->name(engine_->directory.storageOf(index));
    });
}

Result<ElementId> File::createStream(ElementId storage, std::u16string_view name) {
    return guarded([&] {
        const auto index = engine_->storageAt(storage);
        engine_->expectFree(index, name);
        engine_->prepareChange();
        return engine_->name(engine_->directory.create(index, Kind::stream, name, 0));
    });
}

Result<ElementId> File::createStorage(ElementId storage, std::u16string_view name,
                                      std::uint64_t time) {
    return guarded([&] {
        const auto index = engine_->storageAt(storage);
        engine_->expectFree(index, name);
        engine_->prepareChange();
        return engine_->name(engine_->directory.create(index, Kind::storage, name, time));
    });
}

// What the elements held is freed when they are gone. If that cannot be written now, the next commit
// tries again.
Error File::remove(ElementId id) {
    return guardedError([&] {
        const auto index = engine_->at(id);
        if (index == rootId) throw Failure{Error::invalidArgument};
        engine_->prepareChange();
        auto& directory = engine_->directory;
        const auto family = directory.family(index);
        directory.unlink(index);
        guardedError([&] {
            for (const auto member : family) engine_->streams.release(directory[member]);
            engine_->streams.flush();
        });
        guardedError([&] { directory.discard(family); });
    });
}

Error File::rename(ElementId id, std::u16string_view name) {
    const auto storage = parent(id);
    if (!storage)
        return storage.error() == Error::notFound ? Error::invalidArgument : storage.error();
    return move(id, *storage, name);
}

Error File::move(ElementId id, ElementId storage, std::u16string_view name) {
    return guardedError([&] {
        const auto index = engine_->at(id), target = engine_->storageAt(storage);
        if (index == rootId) throw Failure{Error::invalidArgument};
        auto& directory = engine_->directory;
        for (auto above = target; above != rootId; above = directory.storageOf(above)) {
            if (above == index) throw Failure{Error::invalidArgument};
        }
        engine_->expectFree(target, name, index);
        engine_->prepareChange();
        directory.move(index, target, name);
    });
}

Error File::setClassId(ElementId id, const ClassId& classId) {
    return guardedError([&] {
        engine_->change(engine_->storageAt(id),
                        [&](Element& element) { element.classId = classId; });
    });
}

Error File::setStateBits(ElementId id, std::uint32_t bits, std::uint32_t mask) {
    return guardedError([&] {
        engine_->change(engine_->storageAt(id), [&](Element& element) {
            element.stateBits = (element.stateBits & ~mask) | (bits & mask);
        });
    });
}

Error File::setTimes(ElementId id, std::uint64_t created, std::uint64_t modified) {
    return guardedError([&] {
        engine_->change(engine_->storageAt(id), [&](Element& element) {
            element.created = created;
            element.modified = modified;
        });
    });
}

Error File::commit() {
    return guardedError([&] { engine_->commit(); });
}

Error File::close() {
    if (engine_->closed) return Error::none;
    const auto error = guardedError([&] {
        engine_->commit();
        if (engine_->checked) engine_->trim();
        engine_->medium.sync();
    });
    engine_->closed = true;
    return error;
}

struct Stream::State {
    File::Engine& engine;
    ElementId id;
    Cursor cursor{};

    // The stream, or `deleted`; what is no stream is refused.
    Cursor& open() {
        cursor.id = engine.at(id);
        if (engine.directory[cursor.id].kind != Kind::stream) throw Failure{Error::invalidArgument};
        return cursor;
    }
};

Stream::Stream(File& file, ElementId id) : state_(new State{*file.engine_, id}) {}
Stream::~Stream() = default;
Stream::Stream(Stream&&) noexcept = default;
Stream& Stream::operator=(Stream&&) noexcept = default;

Result<std::uint64_t> Stream::size() const {
    return guarded([&] { return state_->engine.directory[state_->open().id].size; });
}

Result<std::size_t> Stream::read(std::uint64_t position, void* target, std::size_t size) {
    return guarded([&] {
        return state_->engine.streams.read(state_->open(), position,
                                           static_cast<std::byte*>(target), size);
    });
}

Error Stream::write(std::uint64_t position, const void* source, std::size_t size) {
    return guardedError([&] {
        auto& cursor = state_->open();
        state_->engine.prepareChange();
        state_->engine.streams.write(cursor, position, static_cast<const std::byte*>(source), size);
    });
}

Error Stream::resize(std::uint64_t size) {
    return guardedError([&] {
        auto& cursor = state_->open();
        state_->engine.prepareChange();
        state_->engine.streams.resize(cursor, size);
    });
}

bool isCompoundFile(const void* bytes, std::size_t size) {
    return Header::isSignature(static_cast<const std::byte*>(bytes), size);
}

}  // namespace compound
