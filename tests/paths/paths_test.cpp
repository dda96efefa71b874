// Rules for names and questions about paths, in both builds.
#include <gtest/gtest.h>
#include <jw32/file_names.h>
#include <jw32/paths.h>
#include <shlwapi.h>

#include "support/scratch_drives.h"

namespace {

void judges(int (*rule)(const char*), std::initializer_list<const char*> accepted,
            std::initializer_list<const char*> refused) {
    for (const char* const name : accepted) EXPECT_EQ(rule(name), 1) << name;
    for (const char* const name : refused) EXPECT_EQ(rule(name), 0) << name;
    EXPECT_EQ(rule(nullptr), 0) << "null";
}

// Of pairs of names with a bar between the two.
using Question = int(const char*, const char*);
void compares(Question* question, std::initializer_list<std::string> equal,
              std::initializer_list<std::string> different) {
    const auto ask = [question](const std::string& pair) {
        const auto bar = pair.find('|');
        return question(pair.substr(0, bar).c_str(), pair.substr(bar + 1).c_str()) != 0;
    };
    for (const auto& pair : equal) EXPECT_TRUE(ask(pair)) << pair;
    for (const auto& pair : different) EXPECT_FALSE(ask(pair)) << pair;
    EXPECT_EQ(question("C:\\a", nullptr), 0) << "the second is null";
    EXPECT_EQ(question(nullptr, "C:\\a"), 0) << "the first is null";
}

TEST(FileName, IsValidByItsCharactersAlone) {
    judges(Jw32FilenameIsValid, {" a", "a ", ".", "CON", "a+[b]", "\xE4~"},
           {"", "   ", "a?b", "a*b", "a\\b", "a:b", "a/b", "a|b", "a\tb", "a<", "a\""});
}

TEST(FileName, IsReservedAsAWhole) {
    judges(Jw32IsReservedDeviceName,
           {"AUX", "con", "clock$", "prn", "Nul", "Ept", "com", "COM1", "COM2", "COM3", "COM4",
            "lpt", "LPT1", "lpt2", "lpt3", "lpt4"},
           {"", "CON.TXT", "COM5", "COM0", "LPT5", "C:\\CON", "CO", "CONX"});
}

TEST(FileName, HasWhatTheMaskDoesNotAllowReplaced) {
    using Result = std::pair<std::string, unsigned>;
    const auto replaced = [](std::string name, unsigned mask, char by) {
        const auto count = Jw32ReplaceInvalidFilenameCharacters(name.data(), by, mask);
        return Result(name, count);
    };
    constexpr unsigned any = GCT_LFNCHAR | GCT_SHORTCHAR;
    EXPECT_EQ(replaced("a?*c", any, '_'), Result("a__c", 2));
    EXPECT_EQ(replaced("a?*c", any | GCT_WILD, '_'), Result("a?*c", 0));
    EXPECT_EQ(replaced(" a,b;", GCT_SHORTCHAR, '_'), Result("_a_b_", 3));
    EXPECT_EQ(replaced("ab", 0, '?'), Result("??", 2));
    EXPECT_EQ(replaced("?a?", any, '\0'), Result(std::string("\0a\0", 3), 2));
    EXPECT_EQ(Jw32ReplaceInvalidFilenameCharacters(nullptr, '_', any), 0u);
}

TEST(FileName, IsEqualWithoutDirectoryAndCase) {
    const std::string n(255, 'n');
    compares(Jw32FilenameIsEqual,
             {"C:\\N.T|n.t", "x/n.t|n.t", "name|NAME.", "name.|name", "ab|ab", n + "|" + n},
             {"name|name.t", "n.a|n.b", "m.a|n.a", "a|a", "ab|", n + "n|" + n + "n",
              "m." + n + "|m." + n});
}

TEST(Drive, IsEqualByTheRootAlone) {
    const std::string deep(400, 'd');
    compares(Jw32DriveIsEqual,
             {"C:\\a|c:\\b", "C:|C:\\x", "C:\\x|C:", "\\\\s\\share|\\\\S\\share\\a",
              "C:\\" + deep + "|C:\\a", "C:\\a|C:\\" + deep},
             {"C:\\a|D:\\a", "\\|\\", "|C:\\a", "a\\b|a\\b", "\\\\s\\share|\\\\s\\other"});
}

TEST(Path, IsEqualByTheTextWhereNothingExists) {
    const auto longest = "Q:\\" + std::string(252, 'n'), tooLong = "Q:\\" + std::string(256, 'n');
    compares(
        Jw32PathIsEqual,
        {"Q:\\D\\M|q:\\d\\m", "Q:\\a\\m|Q:\\a\\m.", "Q:|Q:\\", "Q:\\|Q:", longest + "|" + longest},
        {"Q:\\a\\m|Q:\\a\\m.t", "Q:\\a|Q:\\a\\", "Q:\\a\\m|Q:\\b\\m", "Q:\\.\\b|Q:\\b",
         "Q:\\a|D:\\a", "a\\b|a\\b", tooLong + "|" + tooLong});
}

using PathOfAFile = ScratchDrives;

TEST_F(PathOfAFile, IsEqualToItsShortForm) {
    const auto path = c("A rather long name.extension");
    write(path, "");
    char shortForm[MAX_PATH] = "";
    ASSERT_GT(GetShortPathNameA(path.c_str(), shortForm, MAX_PATH), 0u);
    ASSERT_NE(shortForm, path);
    compares(Jw32PathIsEqual, {path + "|" + shortForm}, {shortForm + ("|" + c("another"))});
}

int isValidPath(const char* path) {
    int removable = 7;
    const int valid = Jw32PathIsValid(path, 0, &removable);
    EXPECT_EQ(removable, 0) << path;
    EXPECT_EQ(Jw32PathIsValid(path, 1, nullptr), valid) << path;
    return valid;
}

TEST(Path, IsValidByItsFormAndItsDrive) {
    const auto tooLong = "C:\\" + std::string(300, 'd');
    judges(isValidPath, {"C:\\", "C:\\no\\a.t", "C:\\..\\b c", "\\\\s\\t", "\\\\s\\t\\\\a"},
           {"C:\\a\\\\b", "C:a", "C:\\a:b", "C:\\a*b", "C:\\a?b", "C:\\a|b", " ", "", "Q:\\a",
            tooLong.c_str()});
}

TEST(Device, IsReadyWhereItsVolumeAnswers) {
    const UINT former = SetErrorMode(SEM_FAILCRITICALERRORS | 2);
    EXPECT_NE(Jw32DeviceIsReady("C:\\"), 0);
    EXPECT_EQ(Jw32DeviceIsReady("Q:\\"), 0);
    EXPECT_NE(Jw32DeviceIsReady(nullptr), 0);
    EXPECT_EQ(SetErrorMode(former), UINT{SEM_FAILCRITICALERRORS | 2}) << "it is not set again";
}

}  // namespace
