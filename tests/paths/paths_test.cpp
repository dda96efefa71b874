// Names, paths, folders, temporary names and files, directory links and free space, in both builds.
#include <gtest/gtest.h>
#include <jw32/directory_links.h>
#include <jw32/file_names.h>
#include <jw32/folders.h>
#include <jw32/free_space.h>
#include <jw32/paths.h>
#include <jw32/temporary_files.h>
#include <shlobj.h>
#include <shlwapi.h>

#include "contract/wine.h"
#include "support/kept_modules.h"
#include "support/scratch_drives.h"
#include "support/temporary_variables.h"
#include "support/triple.h"

namespace {

template <class Element>
using List = std::initializer_list<Element>;

void judges(int (*rule)(const char*), List<const char*> accepted, List<const char*> refused) {
    for (const char* const name : accepted) EXPECT_EQ(rule(name), 1) << name;
    for (const char* const name : refused) EXPECT_EQ(rule(name), 0) << name;
    EXPECT_EQ(rule(nullptr), 0) << "null";
}

// Of pairs of names with a bar between the two.
using Question = int(const char*, const char*);
void compares(Question* question, List<std::string> equal, List<std::string> different) {
    const auto ask = [question](const std::string& pair) {
        const auto bar = pair.find('|');
        return question(pair.substr(0, bar).c_str(), pair.substr(bar + 1).c_str()) != 0;
    };
    for (const auto& pair : equal) EXPECT_TRUE(ask(pair)) << pair;
    for (const auto& pair : different) EXPECT_FALSE(ask(pair)) << pair;
    EXPECT_EQ(question("C:\\a", nullptr) + question(nullptr, "C:\\a"), 0) << "null";
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
    const std::string longest(252, 'n'), n(256, 'n');
    compares(
        Jw32PathIsEqual,
        {"Q:\\D\\M|q:\\d\\m", "Q:\\a\\m|Q:\\a\\m.", "Q:|Q:\\",
         "Q:\\|Q:", "Q:\\" + longest + "|Q:\\" + longest},
        {"Q:\\a\\m|Q:\\a\\m.t", "Q:\\a|Q:\\a\\", "Q:\\a\\m|Q:\\b\\m", "Q:\\.\\b|Q:\\b",
         "Q:\\a|D:\\a", "a\\b|a\\b", "Q:\\" + n + "|Q:\\" + n, "Q:\\a\\" + n + "|Q:\\a\\" + n});
}

using OnDrives = ScratchDrives;

TEST_F(OnDrives, APathIsEqualToItsShortForm) {
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
    EXPECT_NE(Jw32DeviceIsReady("C:\\"), 0);
    EXPECT_EQ(Jw32DeviceIsReady("Q:\\"), 0);
    EXPECT_NE(Jw32DeviceIsReady(nullptr), 0);
}

TEST(ModulePath, IsAWholeFolderWithoutALastBackslash) {
    char path[MAX_PATH] = "", buffer[MAX_PATH] = "text";
    EXPECT_EQ(Jw32GetModulePath(static_cast<HINSTANCE>(INVALID_HANDLE_VALUE), buffer, MAX_PATH), 0);
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, 0) + Jw32GetModulePath(nullptr, nullptr, 9), 0);
    EXPECT_STREQ(buffer, "text");
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    const auto folder = std::string(path).substr(0, std::string(path).rfind('\\'));
    const auto length = static_cast<unsigned>(folder.size());
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, length), 0);
    EXPECT_STREQ(buffer, "") << "it does not fit";
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, length + 1), 1);
    EXPECT_EQ(buffer, folder);
    EXPECT_EQ(Jw32GetModulePath(reinterpret_cast<HINSTANCE>(path), buffer, MAX_PATH), 0);
}

TEST(FolderPath, IsThatOfAKnownFolderWithALastBackslash) {
    char buffer[MAX_PATH] = "text";
    EXPECT_EQ(Jw32GetFolderPath(CSIDL_PERSONAL, buffer, MAX_PATH - 1), 0);
    EXPECT_STREQ(buffer, "text");
    EXPECT_EQ(Jw32GetFolderPath(CSIDL_PERSONAL, buffer, MAX_PATH), 1);
    EXPECT_EQ(std::string(buffer).back(), '\\') << buffer;
    EXPECT_TRUE(Jw32DirectoryExist(buffer)) << buffer;
    EXPECT_EQ(Jw32GetFolderPath(CSIDL_DRIVES, buffer, MAX_PATH), 0);
}

class Temporary : public ScratchDrives {
  protected:
    using Pair = std::pair<std::string, std::string>;  // of TMP and TEMP

    // The text that comes of the variables, and what they are afterwards.
    void gives(const Pair& before, const std::string& text, const Pair& after) {
        char buffer[600] = "";
        kept_.set(before.first, before.second);
        for (const char* const time : {"the first time", "the second time"}) {
            EXPECT_EQ(Jw32TempDirectory(buffer, sizeof buffer), text.size()) << time;
            EXPECT_EQ(buffer, text) << time;
            EXPECT_EQ(Pair(kept_.get("TMP"), kept_.get("TEMP")), after) << time;
        }
    }
    TemporaryVariables kept_;
};

TEST_F(Temporary, DirectoryCompletesTheEnvironment) {
    const auto longForm = c("A rather long name"), other = c("other");
    char shortForm[MAX_PATH] = "", system[MAX_PATH] = "";
    Jw32DirectoryCreate(longForm.c_str());
    ASSERT_GT(GetShortPathNameA(longForm.c_str(), shortForm, MAX_PATH), 0u);
    gives({shortForm, other}, longForm, {shortForm, other});
    gives({"", shortForm}, longForm, {shortForm, shortForm});
    const auto fits = "Q:\\" + std::string(513, 'a'), tooLong = fits + "b";
    gives({"", fits}, fits, {fits, fits});
    gives({"", tooLong}, tooLong, {"", tooLong});
    gives({tooLong + "cdefg", ""}, tooLong + "cde", {tooLong + "cdefg", ""});
    GetSystemDirectoryA(system, MAX_PATH);
    const auto own = system + std::string("\\~Temp");
    gives({"", ""}, own, {own, own});
    EXPECT_TRUE(exists(own));
    removeTree(own);
}

TEST_F(Temporary, TextsAreCutToTheBufferAndTheirLengthIsTold) {
    const std::string text = "Q:\\some\\where\\deep_";  // 19 bytes
    kept_.set(text, "");
    for (const DWORD size : {1u, 19u, 20u, 40u}) {
        std::string buffer(48, 'x'), expected = text.substr(0, size - 1);
        expected.resize(size);
        EXPECT_EQ(Jw32TempDirectory(buffer.data(), size), text.size());
        EXPECT_EQ(buffer, expected + std::string(48 - size, 'x')) << size;
    }
    kept_.set("", "");
    char cut[] = "former";
    EXPECT_GT(Jw32TempFilename(cut, 5, d().c_str(), "jwt"), d("jwt").size());
    EXPECT_EQ(kept_.get("TMP"), "") << "a given directory is no matter of the environment";
    EXPECT_EQ(Jw32TempDirectory(cut, 0) + Jw32TempDirectory(nullptr, 9), 0u);
    EXPECT_EQ(Jw32TempFilename(cut, 0, "", "") + Jw32TempFilename(nullptr, 9, "", ""), 0u);
    EXPECT_EQ(cut, d().substr(0, 4));
}

TEST_F(Temporary, FileIsMadeInTheTemporaryDirectory) {
    kept_.set("", c());
    const auto made = reported(Jw32CreateTempFile, nullptr, "jwt", GENERIC_WRITE, CREATE_NEW,
                               FILE_FLAG_DELETE_ON_CLOSE, 0);
    EXPECT_EQ(made, Report(made.result));
    EXPECT_EQ(Jw32FileFind(c("jwt*").c_str()), 1) << "it is elsewhere";
    CloseHandle(made.result);
    EXPECT_EQ(Jw32FileFind(c("jwt*").c_str()), 0) << "it stays";
}

TEST_F(OnDrives, ADirectoryLinkNeedsAnAbsolutePathAndATarget) {
    const auto link = c("link"), below = c("missing\\link");
    const char *const at = link.c_str(), *const deep = below.c_str();
    const std::pair<const char*, const char*> rows[] = {{nullptr, at}, {"", at},     {at, nullptr},
                                                        {at, ""},      {"link", at}, {"a\\b", at},
                                                        {"Q:\\a", at}, {deep, at}};
    for (const auto& [from, to] : rows) {
        EXPECT_EQ(Jw32MakeDirectoryLink(from, to, 0) + Jw32MakeDirectoryLink(from, to, 1), 0)
            << from << " to " << to;
    }
    EXPECT_FALSE(exists(link) || exists(c("missing")));
}

// Known difference: the volumes of Wine have no reparse points.
TEST_F(OnDrives, ADirectoryLinkIsTriedOutAndMadeWhereTheVolumeHasLinks) {
    const int made = onWine() ? 0 : 1;
    const auto make = [this](const char* name, const std::string& target, int dryRun = 0) {
        return Jw32MakeDirectoryLink(c(name).c_str(), target.c_str(), dryRun);
    };
    Jw32DirectoryCreate(c("empty").c_str());
    EXPECT_EQ(make("empty", c(), 1) + make("link", c(), 7), 2 * made);
    EXPECT_EQ(attributes(c("empty")), DWORD{FILE_ATTRIBUTE_DIRECTORY}) << "after a dry run";
    EXPECT_FALSE(exists(c("link"))) << "after a dry run";
    EXPECT_EQ(make("empty", "D:\\") + make("link", c("target\\")), 2 * made);
    if (onWine()) GTEST_SKIP() << "the volume has no links";
    EXPECT_EQ(make("link", d()) + make("link", d(), 1), 0) << "it is a link already";
    EXPECT_NE(attributes(c("link")) & FILE_ATTRIBUTE_REPARSE_POINT, 0u);
    EXPECT_TRUE(exists(c("empty") + d().substr(2))) << "of a root";
    Jw32DirectoryCreate(c("target").c_str());
    write(c("link\\file"), "content");
    removeTree(c("link"));
    EXPECT_FALSE(exists(c("link")));
    EXPECT_EQ(read(c("target\\file")), "content") << "it goes without its target";
}

class FreeSpace : public KeepsModules {
  protected:
    // The four operations give one result; those with a triple tell a code each.
    void ask(const char* path, int result, DWORD code = 0, DWORD last = 0) {
        EXPECT_EQ(reported(Jw32FreeDiskSpace, path, &bytes_), Report(result, code)) << path;
        EXPECT_EQ(Jw32FreeDiskSpaceC(path, &plain_), result) << path;
        SetLastError(ERROR_NOT_READY);
        EXPECT_EQ(reported(Jw32FreeDiskSpaceMB, path, &megabytes_), Report(result, last)) << path;
        EXPECT_EQ(Jw32FreeDiskSpaceMBC(path, &plainMegabytes_), result) << path;
    }
    ULARGE_INTEGER bytes_{}, plain_{};
    DWORD megabytes_ = 7, plainMegabytes_ = 7;
};

TEST_F(FreeSpace, IsThatOfTheDriveForAnyPathBelowIt) {
    for (const char* const path : {"C:", "c:\\no\\such\\dir", "C:relative", "C:*?"}) {
        ask(path, 1);
        EXPECT_GT(bytes_.QuadPart, 1u << 20) << "the drive seems to be full";
        // Others write to the host's disk at the same time.
        const auto whole = static_cast<double>(bytes_.QuadPart);
        EXPECT_NEAR(static_cast<double>(plain_.QuadPart), whole, whole / 4);
        EXPECT_NEAR(1048576.0 * megabytes_, whole, whole / 4);
        EXPECT_NEAR(1048576.0 * plainMegabytes_, whole, whole / 4);
    }
}

TEST_F(FreeSpace, NeedsADriveThatExistsAndAPlaceForTheResult) {
    ask("Q:\\a", 0, ERROR_PATH_NOT_FOUND, ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(megabytes_ + plainMegabytes_, 0u);
    for (const char* const path :
         {"", "relative", "\\rooted", "\\\\server\\share\\a", static_cast<const char*>(nullptr)}) {
        // In megabytes the thread's last error is told, whatever it is about.
        ask(path, 0, 0, ERROR_NOT_READY);
    }
    EXPECT_EQ(bytes_.QuadPart + plain_.QuadPart, 0u) << "something is stored";
    SetLastError(ERROR_NOT_READY);
    EXPECT_EQ(reported(Jw32FreeDiskSpace, "C:\\", nullptr), Report(0));
    EXPECT_EQ(reported(Jw32FreeDiskSpaceMB, "C:\\", nullptr), Report(0));
    EXPECT_EQ(Jw32FreeDiskSpaceC("C:\\", nullptr) + Jw32FreeDiskSpaceMBC("C:\\", nullptr), 0);
}

}  // namespace
