// Reads a compound file from its bytes, in a way of its own, and proves that it is sound.
#include "checker.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "compound/names.h"

namespace compound_test {
namespace {

using Number = std::uint32_t;
constexpr Number none = 0xFFFFFFFF, end = 0xFFFFFFFE, fatMark = 0xFFFFFFFD, difatMark = 0xFFFFFFFC;

struct Fault {
    std::string text;
};

void expect(bool holds, const std::string& text) {
    if (!holds) throw Fault{text};
}

class Checker {
  public:
    Checker(const std::string& bytes, After after) : bytes_(bytes), strict_(after == After::call) {}

    Contents run() {
        readTables();
        const auto directory = take(chain(number(48)), "directory");
        for (const auto sector : directory) entries_ += sectorAt(sector);
        readMiniStream();
        if (shift_ == 12)
            expect(number(40) == directory.size() || !strict_, "count of directory sectors");
        seen_.assign(entries_.size() / 128, false);
        seen_[0] = true;
        expect(entries_[66] == 5, "the first entry is not the root");
        walkStorage(0, u"/");
        checkRest();
        return contents_;
    }

  private:
    template <class T>
    T at(const std::string& from, std::size_t offset) const {
        T value;
        expect(offset + sizeof value <= from.size(), "out of range");
        std::memcpy(&value, from.data() + offset, sizeof value);
        return value;
    }
    Number number(std::size_t offset) const { return at<Number>(bytes_, offset); }

    std::string sectorAt(Number sector) const {
        const auto begin = (std::size_t{sector} + 1) << shift_;
        expect(begin + (std::size_t{1} << shift_) <= bytes_.size(), "a sector past the end");
        return bytes_.substr(begin, std::size_t{1} << shift_);
    }

    void own(std::vector<const char*>& owners, Number unit, const char* owner) {
        expect(unit < owners.size(), std::string("out of the table: ") + owner);
        expect(owners[unit] == nullptr,
               std::string("shared by ") + owner + " and " + (owners[unit] ? owners[unit] : ""));
        owners[unit] = owner;
    }

    std::vector<Number> chain(Number first) const {
        std::vector<Number> units;
        for (auto unit = first; unit != end; unit = fat_[unit]) {
            expect(unit < fat_.size() && units.size() <= fat_.size(), "a broken chain");
            units.push_back(unit);
        }
        return units;
    }
    const std::vector<Number>& take(const std::vector<Number>& sectors, const char* owner) {
        for (const auto sector : sectors) own(owners_, sector, owner);
        return taken_ = sectors;
    }

    void readTables() {
        shift_ = at<std::uint16_t>(bytes_, 30);
        expect(shift_ == (at<std::uint16_t>(bytes_, 26) == 3 ? 9 : 12), "sector size");
        std::vector<Number> slots, difat;
        for (std::size_t i = 0; i < 109; ++i) slots.push_back(number(76 + 4 * i));
        for (auto sector = number(68); sector != end;) {
            difat.push_back(sector);
            const auto text = sectorAt(sector);
            for (std::size_t i = 0; i + 4 < text.size(); i += 4)
                slots.push_back(at<Number>(text, i));
            sector = at<Number>(text, text.size() - 4);
        }
        expect(difat.size() == number(72), "count of DIFAT sectors");
        for (std::size_t i = 0; i < slots.size(); ++i) {
            if (i >= number(44))
                expect(!strict_ || slots[i] == none, "a FAT sector too many");
            else
                fatText_ += sectorAt(slots[i]);
        }
        for (std::size_t i = 0; i < fatText_.size(); i += 4)
            fat_.push_back(at<Number>(fatText_, i));
        owners_.assign(fat_.size(), nullptr);
        slots.resize(number(44));
        for (const auto sector : take(slots, "FAT")) expect(fat_[sector] == fatMark, "FAT mark");
        for (const auto sector : take(difat, "DIFAT"))
            expect(fat_[sector] == difatMark, "DIFAT mark");
    }

    void readMiniStream() {
        const auto table = take(chain(number(60)), "mini FAT");
        if (strict_) expect(table.size() == number(64), "count of mini FAT sectors");
        for (const auto sector : table) miniText_ += sectorAt(sector);
        for (std::size_t i = 0; i < miniText_.size(); i += 4)
            miniFat_.push_back(at<Number>(miniText_, i));
        const auto size = at<Number>(entries_, 120);
        const auto stream = take(chain(at<Number>(entries_, 116)), "mini stream");
        for (const auto sector : stream) mini_ += sectorAt(sector);
        expect(strict_ ? mini_.size() == size : mini_.size() >= size, "size of the mini stream");
        expect(size / 64 <= miniFat_.size(), "the mini stream is larger than its table");
        miniOwners_.assign(size / 64, nullptr);
    }

    std::string content(std::size_t offset) {
        const auto size = at<Number>(entries_, offset + 120);
        auto unit = at<Number>(entries_, offset + 116);
        const bool mini = size < 4096;
        const auto& table = mini ? miniFat_ : fat_;
        std::string text;
        while (text.size() < size) {
            own(mini ? miniOwners_ : owners_, unit, "stream");
            text += mini ? mini_.substr(std::size_t{unit} * 64, 64) : sectorAt(unit);
            unit = table[unit];
        }
        if (strict_) expect(unit == end, "a chain longer than its stream");
        text.resize(size);
        return text;
    }

    std::u16string nameOf(Number entry) const {
        const auto length = at<std::uint16_t>(entries_, std::size_t{entry} * 128 + 64);
        expect(length >= 4 && length <= 64 && length % 2 == 0, "length of a name");
        std::u16string name(length / 2 - 1, 0);
        std::memcpy(name.data(), &entries_[std::size_t{entry} * 128], length - 2);
        return name;
    }

    void walkStorage(Number storage, const std::u16string& path) {
        std::vector<Number> ordered;
        int depth = 0;
        walkTree(at<Number>(entries_, std::size_t{storage} * 128 + 76), 1, true, depth, ordered);
        expect(depth <= 2 * std::log2(static_cast<double>(ordered.size()) + 1), "too deep a tree");
        for (std::size_t i = 0; i < ordered.size(); ++i) {
            const auto name = nameOf(ordered[i]);
            const auto offset = std::size_t{ordered[i]} * 128;
            if (i > 0) {
                expect(compound::compareNames(nameOf(ordered[i - 1]), name,
                                              compound::simpleUpperCase) < 0,
                       "a tree out of order");
            }
            if (entries_[offset + 66] == 2) {
                contents_[path + name] = content(offset);
            } else {
                contents_[path + name + u"/"] = {};
                walkStorage(ordered[i], path + name + u"/");
            }
        }
    }

    void walkTree(Number entry, int level, bool blackAbove, int& depth,
                  std::vector<Number>& ordered) {
        if (entry == none) return;
        const auto offset = std::size_t{entry} * 128;
        expect(entry < seen_.size() && !seen_[entry],
               "a link to nowhere or to an entry that is linked");
        seen_[entry] = true;
        expect(entries_[offset + 66] == 1 || entries_[offset + 66] == 2, "kind of an entry");
        const bool black = entries_[offset + 67] == 1;
        expect(black || (blackAbove && level > 1), "two reds in a row");
        depth = std::max(depth, level);
        walkTree(at<Number>(entries_, offset + 68), level + 1, black, depth, ordered);
        ordered.push_back(entry);
        walkTree(at<Number>(entries_, offset + 72), level + 1, black, depth, ordered);
    }

    // What nobody owns is free, and what is deleted is clear; entries that moved are cleared later.
    void checkRest() {
        if (!strict_) return;
        const auto lock = shift_ == 12 ? 0x7FFFFu - 1 : none;
        for (Number i = 0; i < fat_.size(); ++i)
            expect(owners_[i] != nullptr || fat_[i] == none || i == lock, "a lost sector");
        for (Number i = 0; i < miniOwners_.size(); ++i)
            expect(miniOwners_[i] != nullptr || miniFat_[i] == none, "a lost mini sector");
    }

    const std::string& bytes_;
    bool strict_;
    int shift_ = 0;
    std::string fatText_, miniText_, mini_, entries_;
    std::vector<Number> fat_, miniFat_, taken_;
    std::vector<const char*> owners_, miniOwners_;
    std::vector<bool> seen_;
    Contents contents_;
};

}  // namespace

Checked check(const std::string& bytes, After after) {
    try {
        return {"", Checker(bytes, after).run()};
    } catch (const Fault& fault) {
        return {fault.text, {}};
    }
}

}  // namespace compound_test
