// The rules for names and paths, in both builds, most of them by the lines of rules.txt.
#include <jw32/file_names.h>
#include <jw32/paths.h>

#include "support/scratch_drives.h"
#include "support/vectors.h"

namespace {

// The text with letters in the place of each count.
std::string expanded(const std::string& text) {
    const auto at = text.find('%');
    if (at == text.npos) return text;
    std::size_t digits = 0;
    const std::string letters(std::stoul(text.substr(at + 1), &digits), 'x');
    return text.substr(0, at) + letters + text.substr(at + 1 + digits);
}

using Rule = int(const char*);
using Question = int(const char*, const char*);

auto rule(Rule* operation) {
    return [operation](const Words& w) {
        return std::to_string(operation(expanded(w.at(0)).c_str()));
    };
}
auto question(Question* operation) {
    return [operation](const Words& w) {
        const auto first = expanded(w.at(0)), second = expanded(w.at(1));
        return std::to_string(operation(first.c_str(), second.c_str()) != 0);
    };
}

int isValidPath(const char* path) {
    int removable = 7;
    const int valid = Jw32PathIsValid(path, 0, &removable);
    EXPECT_EQ(removable, 0) << path;
    EXPECT_EQ(Jw32PathIsValid(path, 1, nullptr), valid) << path;
    return valid;
}

std::string replacedName(const Words& w) {
    std::string name = w.at(0);
    const auto mask = static_cast<unsigned>(std::stoul(w.at(1)));
    const auto count = Jw32ReplaceInvalidFilenameCharacters(name.data(), '_', mask);
    return name + ' ' + std::to_string(count);
}

TEST(NamesAndPaths, FollowTheRules) {
    holdVectors({{"Jw32FilenameIsValid", rule(Jw32FilenameIsValid)},
                 {"Jw32IsReservedDeviceName", rule(Jw32IsReservedDeviceName)},
                 {"Jw32ReplaceInvalidFilenameCharacters", replacedName},
                 {"Jw32FilenameIsEqual", question(Jw32FilenameIsEqual)},
                 {"Jw32DriveIsEqual", question(Jw32DriveIsEqual)},
                 {"Jw32PathIsEqual", question(Jw32PathIsEqual)},
                 {"Jw32PathIsValid", rule(isValidPath)}});
}

TEST(NamesAndPaths, OfNothingFollowNone) {
    for (Rule* const rule : {Jw32FilenameIsValid, Jw32IsReservedDeviceName, isValidPath}) {
        EXPECT_EQ(rule(nullptr), 0);
    }
    for (Question* const question : {Jw32FilenameIsEqual, Jw32DriveIsEqual, Jw32PathIsEqual}) {
        EXPECT_EQ(question("C:\\a", nullptr) + question(nullptr, "C:\\a"), 0);
    }
    EXPECT_EQ(Jw32FilenameIsValid("a\tb"), 0);
    EXPECT_EQ(Jw32ReplaceInvalidFilenameCharacters(nullptr, '_', 3), 0u);
    std::string name = "?a?";
    EXPECT_EQ(Jw32ReplaceInvalidFilenameCharacters(name.data(), '\0', 3), 2u);
    EXPECT_EQ(name, std::string("\0a\0", 3)) << "it goes on behind a zero";
}

using PathOfAFile = ScratchDrives;

TEST_F(PathOfAFile, IsEqualToItsShortForm) {
    const auto path = c("A rather long name.extension");
    write(path, "");
    char shortForm[MAX_PATH] = "";
    ASSERT_GT(GetShortPathNameA(path.c_str(), shortForm, MAX_PATH), 0u);
    ASSERT_NE(shortForm, path);
    EXPECT_EQ(Jw32PathIsEqual(path.c_str(), shortForm), 1);
    EXPECT_EQ(Jw32PathIsEqual(shortForm, c("another").c_str()), 0);
}

TEST(Device, IsReadyWhereItsVolumeAnswers) {
    EXPECT_NE(Jw32DeviceIsReady("C:\\"), 0);
    EXPECT_EQ(Jw32DeviceIsReady("Q:\\"), 0);
    EXPECT_NE(Jw32DeviceIsReady(nullptr), 0);
}

}  // namespace
