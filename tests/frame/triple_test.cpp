// The steps of the error triple, as callers see them, and its texts.
#include <gtest/gtest.h>
#include <jw32/resource_handle.h>

#include <string>

#include "frame/error_triple.h"
#include "frame/messages.h"

namespace {

const std::string former("abc\0xxx", 7);  // a buffer of a caller, with the text of an older failure

TEST(ErrorTriple, ClearsTheCodeAndTheFirstByteOfTheTextUnlessItIsEmpty) {
    DWORD code = 7;
    std::string buffer = former;
    const ErrorTriple triple(&code, buffer.data(), 7);
    EXPECT_EQ(code, 0u);
    EXPECT_EQ(buffer, std::string("\0bc\0xxx", 7));
    static const char readOnly[1] = "";
    const ErrorTriple another(nullptr, const_cast<char*>(readOnly), 1);
}

TEST(ErrorTriple, GivesWhatIsWantedOfCodeAndText) {
    struct {
        bool wantsCode, wantsBuffer;
        DWORD size;
        bool getsText;
    } const rows[] = {{true, true, 256, true},
                      {false, true, 256, true},
                      {true, false, 256, false},
                      {true, true, 0, false},
                      {false, false, 0, false}};
    for (const auto& row : rows) {
        SCOPED_TRACE(&row - rows);
        DWORD code = 7;
        std::string buffer = former + std::string(256, 'x');
        const ErrorTriple triple(row.wantsCode ? &code : nullptr,
                                 row.wantsBuffer ? buffer.data() : nullptr, row.size);
        EXPECT_EQ(triple.failWithString(-1, 4711, 2), -1);
        SetLastError(ERROR_ACCESS_DENIED);
        EXPECT_EQ(triple.fail(-1), -1);
        EXPECT_EQ(code, row.wantsCode ? DWORD{ERROR_ACCESS_DENIED} : 7u);
        EXPECT_EQ(buffer != former + std::string(256, 'x'), row.getsText);
        EXPECT_NE(buffer[0], '\0');
    }
}

TEST(ErrorTriple, KeepsTheCodeWhenThereIsNoTextOrNoRoomForIt) {
    for (const auto& [failure, size] : {std::pair{0xE0001234u, 256u}, {5u, 2u}}) {
        DWORD code = 0;
        char buffer[256] = "";
        EXPECT_EQ(ErrorTriple(&code, buffer, size).fail(0, failure), 0);
        EXPECT_EQ(code, failure);
    }
}

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
