// Name conversions that the platform refuses at first, or for good.
#include <atlexcept.h>
#include <gmock/gmock.h>

#include "core/testing.h"
#include "frame/name_conversion.h"

namespace {

using namespace testing;

using machine::Script;

// The calls that convert, how they are answered for, and what makes them.
const std::tuple<const char*, void (Script::*)(int, machine::Calls), void (*)()> conversions[] = {
    {"MultiByteToWideChar", &Script::answer<&MultiByteToWideChar>,
     [] { EXPECT_EQ(Jw32WideName("name")[3], L'e'); }},
    {"WideCharToMultiByte", &Script::answer<&WideCharToMultiByte>,
     [] { EXPECT_STREQ(Jw32AnsiName(L"name"), "name"); }}};

TEST(Conversions, AskForTheRoomThatIsNeededOnce) {
    for (const auto& [call, answer, convert] : conversions) {
        Script script;
        script.fail(call, ERROR_INSUFFICIENT_BUFFER, 1);
        (script.*answer)(129, 2);
        convert();
        EXPECT_THAT(script.texts(), ElementsAre(_, _, _, ContainsRegex("[(]3, 0, .*, 129")));
    }
}

TEST(Conversions, ThrowTheCodeOfTheCallThatFailedLast) {
    struct {
        DWORD code;
        unsigned call;  // which call fails with it; the first one finds too little room then
        DWORD result;
        int room = 5;  // what the second one tells that is needed
    } const rows[] = {{ERROR_NO_UNICODE_TRANSLATION, 1, 0x80070459},
                      {0x00015678, 1, 0x80075678},
                      {0x80004005, 1, 0x80004005},
                      {ERROR_INVALID_PARAMETER, 2, 0x80070057},
                      {ERROR_INSUFFICIENT_BUFFER, 3, 0x8007007A},
                      {ERROR_INVALID_FUNCTION, 3, 0x80070057, -5}};
    for (const auto& row : rows) {
        for (const auto& [call, answer, convert] : conversions) {
            Script script;
            if (row.call > 1) script.fail(call, ERROR_INSUFFICIENT_BUFFER, 1);
            if (row.call > 2) (script.*answer)(row.room, 2);
            if (row.room > 0) script.fail(call, row.code, row.call);
            DWORD thrown = 0;
            try {
                convert();
            } catch (const CAtlException& exception) {
                thrown = static_cast<DWORD>(exception.m_hr);
            }
            EXPECT_EQ(thrown, row.result) << call << " fails with " << row.code;
        }
    }
}

}  // namespace
