// Modules that no file stands for: those of the system, and those that the machine describes.
#pragma once

#include "modules/module.h"

namespace machine {

class NamedModule : public Module {
  public:
    NamedModule(std::string name, bool asData) : name_(std::move(name)), asData_(asData) {}

    // Whether the system or the machine in force has a module of that name.
    static bool exists(std::string_view name);

    HMODULE handle() const override;
    std::u16string file() const override;
    FARPROC entryPoint(std::string_view name) const override;
    std::u16string string(UINT id, DWORD& error) const override;
    std::u16string message(DWORD id, LANGID language) const override;
    bool answersTo(std::string_view name, bool asData) const override;

  private:
    std::string name_;  // UTF-8, with its extension
    bool asData_;
};

}  // namespace machine
