// A fixture for a mapped file: short ways to open it and to move its view.
#pragma once

#include <jw32/mm_file.h>

#include "support/scratch_drives.h"
#include "support/triple.h"

class MappedFile : public ScratchDrives {
  protected:
    using Place = std::pair<DWORD, DWORD>;  // offset and length
    static constexpr auto reading = CJw32MmFile::eRead, writing = CJw32MmFile::eReadWrite;

    // Each gives whether there is a view, which `view` then shows, and what was told.
    auto open(CJw32MmFile::eOpenmode mode, const std::string& name) {
        return reported([&](auto... t) { return shows(file.Open(mode, name.c_str(), t...)); });
    }
    auto openPart(CJw32MmFile::eOpenmode mode, const std::string& name) {
        return reported(
            [&](auto... t) { return shows(file.Open(mode, name.c_str(), part, t...)); });
    }
    auto move(Place to) {
        place = to;
        return reported(
            [&](auto... t) { return shows(file.ReMap(place.first, place.second, t...)); });
    }

    CJw32MmFile file;
    char* view = nullptr;
    DWORD part = 99;  // how many bytes the view shows
    Place place;

  private:
    bool shows(void* given) { return (view = static_cast<char*>(given)) != nullptr; }
};
