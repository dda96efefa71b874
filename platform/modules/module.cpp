// What a module answers unless its kind knows better.
#include "modules/module.h"

namespace machine {

FARPROC Module::entryPoint(std::string_view) const {
    return nullptr;
}

const Resources& Module::resources() const {
    static const NoResources none;
    return none;
}

std::u16string Module::string(UINT id, DWORD& error) const {
    return resourceString(resources(), static_cast<WORD>(id), error);
}

std::u16string Module::message(DWORD id, LANGID language) const {
    return resourceMessage(resources(), id, language);
}

void Module::notify(DWORD) const {}

bool Module::answersTo(std::string_view, bool) const {
    return false;
}

}  // namespace machine
