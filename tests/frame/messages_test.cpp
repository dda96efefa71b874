// Message texts, in both builds.
#include "frame/messages.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(Messages, AreTheSystemsOwn) {
    char expected[256] = "";
    ASSERT_NE(
        FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, 87, 0x400, expected, 256, nullptr), 0u);
    char text[256] = "";
    EXPECT_EQ(Jw32SystemMessage(87, text, sizeof text), std::string(expected).size());
    EXPECT_STREQ(text, expected);
    char comText[256] = "";
    Jw32ComMessage(0x57, comText, sizeof comText);
    EXPECT_STREQ(comText, expected);
}

}  // namespace
