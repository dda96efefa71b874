// Name conversions that the platform refuses at first, or for good.
#include <atlexcept.h>
#include <gmock/gmock.h>

#include "frame/name_conversion.h"
#include "machine/testing.h"

namespace {

class Conversions : public testing::TestWithParam<bool> {
  protected:
    static constexpr const char* source = "name";
    const char* call() const { return GetParam() ? "MultiByteToWideChar" : "WideCharToMultiByte"; }

    // The text that comes out of a conversion, and back through the other one.
    std::string convert() const {
        if (GetParam()) return first(Jw32WideName(source));
        return static_cast<const char*>(Jw32AnsiName(wideSource));
    }

  private:
    static constexpr wchar_t wideSource[] = {'n', 'a', 'm', 'e', 0};
    static std::string first(const wchar_t* text) {
        std::string result;
        for (; *text != 0; ++text) result += static_cast<char>(*text);
        return result;
    }
};

TEST_P(Conversions, AskForTheRoomThatIsNeeded) {
    machine::Script script;
    script.fail(call(), ERROR_INSUFFICIENT_BUFFER, 1);
    EXPECT_EQ(convert(), source);
    EXPECT_EQ(script.count(call()), 3u);
}

TEST_P(Conversions, ThrowTheCodeOfTheCallThatFailedLast) {
    struct {
        std::uint32_t code;
        unsigned call;  // which call fails with it; the first one finds too little room then
        std::uint32_t result;
    } const rows[] = {
        {ERROR_NO_UNICODE_TRANSLATION, 1, 0x80070459},
        {0x00015678, 1, 0x80075678},
        {0x80004005, 1, 0x80004005},
        {ERROR_INVALID_PARAMETER, 2, 0x80070057},
        {ERROR_INSUFFICIENT_BUFFER, 3, 0x8007007A},
    };
    for (const auto& row : rows) {
        machine::Script script;
        if (row.call > 1) script.fail(call(), ERROR_INSUFFICIENT_BUFFER, 1);
        script.fail(call(), row.code, row.call);
        try {
            convert();
            ADD_FAILURE() << "no exception for " << row.code;
        } catch (const CAtlException& exception) {
            EXPECT_EQ(static_cast<std::uint32_t>(exception.m_hr), row.result);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(BothWays, Conversions, testing::Bool());

}  // namespace
