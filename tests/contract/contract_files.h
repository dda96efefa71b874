// The fixture of the tests about files: the scratch drives with a file and a folder to work on.
#pragma once

#include "support/last_error.h"
#include "support/scratch_drives.h"
#include "support/wide.h"
#include "wine.h"

inline std::string narrow(const wchar_t* text) {
    char result[MAX_PATH] = "";
    WideCharToMultiByte(CP_ACP, 0, text, -1, result, sizeof result, nullptr, nullptr);
    return result;
}

class ContractFiles : public ScratchDrives {
  protected:
    ContractFiles() { arrange(); }
    void arrange() const {
        CreateDirectoryW(Wide(c("folder")), nullptr);
        write(c("file"), "content");
    }
};
