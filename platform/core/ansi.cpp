// Text in the machine's code page.
#include "core/ansi.h"

#include "core/machine.h"
#include "text/code_page.h"

namespace machine {

std::u16string fromAnsi(std::string_view text) {
    return decode(current().codePage, text);
}

std::string toAnsi(std::u16string_view text) {
    return encode(current().codePage, text).text;
}

}  // namespace machine
