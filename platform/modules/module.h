// What can be asked of a module, whatever it is.
#pragma once

#include <string>
#include <string_view>

#include "modules/resources.h"
#include "windef.h"

namespace machine {

class Module {
  public:
    Module() = default;
    virtual ~Module() = default;
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    virtual HMODULE handle() const = 0;

    // The path of the file as the interface names it; empty: it lies on no drive.
    virtual std::u16string file() const = 0;

    // Null: the module offers no such entry point.
    virtual FARPROC entryPoint(std::string_view name) const;

    virtual const Resources& resources() const;

    // A string of the string table; empty: not there, with the reason in `error`.
    virtual std::u16string string(UINT id, DWORD& error) const;

    // A text of the message table; empty: not there.
    virtual std::u16string message(DWORD id, LANGID language) const;

    // The process has begun (DLL_PROCESS_ATTACH) or is about to end, or a thread of it.
    virtual void notify(DWORD reason) const;

    // What is looked for by a name that a caller gave to LoadLibraryA or GetModuleHandleA.
    virtual bool answersTo(std::string_view name, bool asData) const;
};

}  // namespace machine
