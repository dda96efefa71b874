// Message texts, in both builds.
#include "frame/messages.h"

#include <gtest/gtest.h>

namespace {

TEST(Messages, AreTheSystemsOwn) {
    char expected[256] = "", text[256] = "", comText[256] = "";
    const DWORD length =
        FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM, nullptr, 87, 0x400, expected, 256, nullptr);
    EXPECT_NE(length, 0u);
    EXPECT_EQ(Jw32SystemMessage(87, text, sizeof text), length);
    EXPECT_STREQ(text, expected);
    Jw32ComMessage(87, comText, sizeof comText);
    EXPECT_STREQ(comText, expected);
}

}  // namespace
