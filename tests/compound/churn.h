// Random changes of a compound file, beside a model in memory.
#pragma once

#include <random>

#include "checker.h"
#include "compound/compound_file.h"

namespace compound_test {

// Changes a file in ways that a seed determines. After each step `before` and `model` hold what the
// file held before and holds now.
class Churn {
  public:
    explicit Churn(unsigned seed, std::size_t largest = 9000) : random_(seed), largest_(largest) {}

    // One change; answers its result. A change that failed leaves the model as it was.
    compound::Error step(compound::File& file);
    // Whether a file holds what the model says, or may hold while the last step was under way.
    bool allows(const Contents& contents) const;

    Contents before, model;

  private:
    compound::Error create(compound::File& file);
    compound::Error createStorage(compound::File& file);
    compound::Error write(compound::File& file);
    compound::Error resize(compound::File& file);
    compound::Error remove(compound::File& file);
    compound::Error relocate(compound::File& file);

    std::size_t below(std::size_t limit) { return random_() % limit; }
    std::string noise(std::size_t size);
    std::u16string freshName();
    // A random element, or an empty path when there is none.
    std::u16string pick(bool storages, bool streams);
    static compound::ElementId find(compound::File& file, const std::u16string& path);

    std::minstd_rand random_;
    std::size_t largest_;
    std::u16string overwritten_;  // the path of a stream that is written in place
    std::string overwriting_;     // what it is to hold
};

// What the file holds, read through the engine.
Contents contentsOf(compound::File& file);

}  // namespace compound_test
