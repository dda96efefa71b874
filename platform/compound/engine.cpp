// The parts of an open file, put together.
#include "compound/engine.h"

namespace compound {
namespace {

Medium withSectors(Medium medium, std::size_t size) {
    medium.setSectorSize(size);
    return medium;
}

std::uint64_t mostBytes(int version) {
    return version == 3 ? version3Limit - 1 : std::uint64_t{maxSector} * 4096;
}

}  // namespace

File::Engine::Engine(Medium opened, const Header& read, const Options& options)
    : medium(withSectors(std::move(opened), read.sectorSize())),
      header(read),
      sectors(medium, header),
      directory(medium, header, sectors, options.upperCase),
      minis(medium, header, sectors, (directory.load(), directory)),
      streams(medium, directory, sectors, minis, mostBytes(read.version())),
      writable(options.writable) {}

Id File::Engine::at(ElementId id) const {
    const auto& elements = directory.elements();
    if (id.index >= elements.count()) throw Failure{Error::deleted};
    const auto& element = elements[id.index];
    if (element.kind == Kind::none || element.generation != id.generation)
        throw Failure{Error::deleted};
    return id.index;
}

Id File::Engine::storageAt(ElementId id) const {
    const auto index = at(id);
    if (!directory[index].isStorage()) throw Failure{Error::invalidArgument};
    return index;
}

void File::Engine::prepareChange() {
    if (!writable || closed) throw Failure{Error::readOnly};
    if (checked) return;
    Reclaim(medium, header, sectors, minis, directory).run();
    checked = true;
}

void File::Engine::expectFree(Id storage, std::u16string_view text, Id except) {
    if (!isValidName(text)) throw Failure{Error::invalidName};
    const auto found = directory.tree(storage).find(text);
    if (found != noElement && found != except) throw Failure{Error::exists};
}

void File::Engine::commit() {
    if (!checked) return;
    directory.clearLeft();
    minis.flush();
    sectors.flush();
    medium.sync();
    minis.synced();
    sectors.synced();
}

// Nothing that the file needs is changed here, so that it is sound after each step.
void File::Engine::trim() {
    minis.trim();
    sectors.synced();
    sectors.dropEmptyPages();
    sectors.flush();
    const auto length = sectors.usedLength();
    if (length >= medium.length()) return;
    medium.order();
    medium.truncate(length);
}

}  // namespace compound
