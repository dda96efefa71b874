// Which calls a message lookup makes.
#include <gmock/gmock.h>

#include "core/machine.h"
#include "core/testing.h"
#include "frame/messages.h"

namespace {

using testing::ElementsAre;

template <class Operation>
std::vector<std::string> callsOf(Operation operation, DWORD code) {
    char text[256] = "";
    const machine::Script script;
    operation(static_cast<WORD>(code), text, sizeof text);
    EXPECT_EQ(text[0] != '\0', code == 2100 || code == 2999) << "the text of " << code;
    return script.texts();
}

TEST(Messages, OfTheNetworkAreLookedUpWithinTheirRangeOnly) {
    machine::Machine withMessages;
    withMessages.dataModules.push_back({"NetMsg.dll", {{2100, "first"}, {2999, "last"}}, {}});
    const machine::ScopedMachine computer(withMessages);
    const std::string load = R"(LoadLibraryExA("netmsg.dll", null, 2))";
    const std::string own = "FormatMessageA(6144, pointer, ",
                      system = "FormatMessageA(4096, null, ";
    const std::string rest = ", 1024, pointer, 256, null)", release = "FreeLibrary(pointer)";
    for (const DWORD code : {2100, 2999}) {
        const auto message = own + std::to_string(code) + rest;
        EXPECT_THAT(callsOf(Jw32SystemMessage, code), ElementsAre(load, message, release));
    }
    for (const DWORD code : {2099, 3000}) {
        const auto message = system + std::to_string(code) + rest;
        EXPECT_THAT(callsOf(Jw32SystemMessage, code), ElementsAre(message));
        EXPECT_THAT(callsOf(Jw32ComMessage, code), ElementsAre(message));
    }
    const machine::ScopedMachine without(machine::Machine{});
    EXPECT_THAT(callsOf(Jw32SystemMessage, 2500), ElementsAre(load, system + "2500" + rest));
    EXPECT_THAT(callsOf(Jw32ComMessage, 2500), ElementsAre(system + "2500" + rest));
}

}  // namespace
