// The string table of the shared object, which has no resource section.
#include <iterator>

#include "platform_module.h"
#include "strings.h"

namespace {

constexpr PlatformModuleString strings[] = {
    {JW32_STRING_NOT_AVAILABLE, JW32_TEXT_NOT_AVAILABLE},
    {JW32_STRING_EMPTY_FILE, JW32_TEXT_EMPTY_FILE},
};

}  // namespace

const PlatformModuleStrings platformModuleStrings = {strings, std::size(strings)};
