// Message texts by number, from a module or from the system.
#include <algorithm>
#include <string>

#include "core/ansi.h"
#include "core/script.h"
#include "errhandlingapi.h"
#include "host/host_errors.h"
#include "modules/modules.h"
#include "system_messages.h"
#include "winbase.h"
#include "winerror.h"

namespace {

std::string moduleMessage(LPCVOID source, DWORD id, DWORD language) {
    const machine::UsedModule module(static_cast<HMODULE>(const_cast<void*>(source)));
    if (!module) return {};
    return machine::toAnsi(module->message(id, static_cast<LANGID>(language)));
}

std::string messageText(DWORD flags, LPCVOID source, DWORD id, DWORD language) {
    std::string text;
    if ((flags & FORMAT_MESSAGE_FROM_HMODULE) != 0) text = moduleMessage(source, id, language);
    if (text.empty() && (flags & FORMAT_MESSAGE_FROM_SYSTEM) != 0) text = systemMessage(id);
    return text;
}

// A sequence of "%" and a digit asks for an argument.
bool wantsArguments(const std::string& text) {
    const auto isInsert = [](char first, char second) {
        return first == '%' && second >= '1' && second <= '9';
    };
    return std::adjacent_find(text.begin(), text.end(), isInsert) != text.end();
}

DWORD refuse(DWORD code) {
    SetLastError(code);
    return 0;
}

}  // namespace

DWORD WINAPI FormatMessageA(DWORD flags, LPCVOID source, DWORD messageId, DWORD languageId,
                            LPSTR buffer, DWORD size, va_list* arguments) try {
    if (const auto scripted = machine::call<&FormatMessageA>(flags, source, messageId, languageId,
                                                             buffer, size, arguments)) {
        return scripted.valueOr(0);
    }
    if (buffer == nullptr) return refuse(ERROR_INVALID_PARAMETER);
    const auto text = messageText(flags, source, messageId, languageId);
    if (text.empty()) return refuse(ERROR_MR_MID_NOT_FOUND);
    const bool literal = (flags & FORMAT_MESSAGE_IGNORE_INSERTS) != 0;
    // Inserts are not carried out: whoever calls here gives no arguments for them.
    if (!literal && wantsArguments(text)) {
        return refuse(arguments == nullptr ? ERROR_INVALID_PARAMETER : ERROR_CALL_NOT_IMPLEMENTED);
    }
    if (text.size() >= size) return refuse(ERROR_INSUFFICIENT_BUFFER);
    text.copy(buffer, text.size());
    buffer[text.size()] = '\0';
    return static_cast<DWORD>(text.size());
} catch (const std::exception&) {
    return machine::outOfMemory(DWORD{0});
}
