// Shared objects and programs that announced themselves as modules.
#pragma once

#include "modules/module.h"
#include "modules/res_file.h"
#include "platform_module.h"

namespace machine {

class AnnouncedModule : public Module {
  public:
    AnnouncedModule(HMODULE handle, const PlatformModule& module);

    HMODULE handle() const override { return handle_; }
    std::u16string file() const override;
    const Resources& resources() const override { return resources_; }
    void notify(DWORD reason) const override;

  private:
    HMODULE handle_;
    ResFile resources_;
    BOOL(WINAPI* entry_)(HINSTANCE, DWORD, LPVOID);
};

// The base address of the program.
HMODULE programHandle();

// The path of the program's file; empty: it lies on no drive.
std::u16string programFile();

}  // namespace machine
