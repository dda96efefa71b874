// The fixture of the tests about files: the scratch drives with a file and a folder to work on.
#pragma once

#include "support/last_error.h"
#include "support/scratch_drives.h"
#include "support/wide.h"
#include "wine.h"

class ContractFiles : public ScratchDrives {
  protected:
    ContractFiles() { arrange(); }
    void arrange() const {
        CreateDirectoryW(Wide(c("folder")), nullptr);
        write(c("file"), "content");
    }
};
