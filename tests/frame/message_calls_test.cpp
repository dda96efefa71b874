// Which calls a message lookup makes.
#include <gmock/gmock.h>

#include "frame/messages.h"
#include "machine/machine.h"
#include "machine/testing.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

machine::Machine withNetworkMessages() {
    machine::Machine result;
    result.dataModules.push_back({"NetMsg.dll", {{2100, "first"}, {2999, "last"}}, {}});
    return result;
}

TEST(Messages, OfTheNetworkAreLookedUpWithinTheirRangeOnly) {
    const machine::Installed computer(withNetworkMessages());
    const auto before = machine::inUse();
    for (const DWORD code : {2100, 2999}) {
        char text[256] = "";
        machine::Script script;
        Jw32SystemMessage(code, text, sizeof text);
        ASSERT_THAT(script.names(), ElementsAre("LoadLibraryExA", "FormatMessageA", "FreeLibrary"));
        EXPECT_EQ(script.calls()[0].text(), "LoadLibraryExA(\"netmsg.dll\", null, 2)");
        EXPECT_THAT(script.calls()[1].text(), HasSubstr("(6144, pointer, "));
        EXPECT_STRNE(text, "");
    }
    for (const char* const code : {"2099", "3000"}) {
        char text[256] = "";
        machine::Script script;
        Jw32SystemMessage(static_cast<DWORD>(std::stoul(code)), text, sizeof text);
        ASSERT_THAT(script.names(), ElementsAre("FormatMessageA"));
        EXPECT_EQ(script.calls()[0].text(),
                  std::string("FormatMessageA(4096, null, ") + code + ", 1024, pointer, 256)");
    }
    EXPECT_EQ(machine::inUse(), before);
}

TEST(Messages, AreTheSystemsWithoutTheNetworkModule) {
    const machine::Installed computer(machine::Machine{});
    char text[256] = "";
    machine::Script script;
    Jw32SystemMessage(2100, text, sizeof text);
    ASSERT_THAT(script.names(), ElementsAre("LoadLibraryExA", "FormatMessageA"));
    EXPECT_THAT(script.calls()[1].text(), HasSubstr("(4096, null, 2100, "));
}

TEST(Messages, OfComNeverComeFromTheNetworkModule) {
    const machine::Installed computer(withNetworkMessages());
    char text[256] = "";
    machine::Script script;
    Jw32ComMessage(2100, text, sizeof text);
    EXPECT_THAT(script.names(), ElementsAre("FormatMessageA"));
}

}  // namespace
