// Well-known folders, temporary names and files, and directory links, in both builds.
#include <gtest/gtest.h>
#include <jw32/directory_links.h>
#include <jw32/folders.h>
#include <jw32/temporary_files.h>

// This order: the shell's header needs the system's.
#include <shlobj.h>

#include "contract/wine.h"
#include "support/scratch_drives.h"
#include "support/temporary_variables.h"
#include "support/triple.h"

namespace {

TEST(ModulePath, IsAWholeFolderWithoutALastBackslash) {
    char path[MAX_PATH] = "", buffer[MAX_PATH] = "text";
    EXPECT_EQ(Jw32GetModulePath(static_cast<HINSTANCE>(INVALID_HANDLE_VALUE), buffer, MAX_PATH), 0);
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, 0), 0);
    EXPECT_EQ(Jw32GetModulePath(nullptr, nullptr, MAX_PATH), 0);
    EXPECT_STREQ(buffer, "text");
    GetModuleFileNameA(nullptr, path, MAX_PATH);
    const auto folder = std::string(path).substr(0, std::string(path).rfind('\\'));
    const auto length = static_cast<unsigned>(folder.size());
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, length), 0);
    EXPECT_STREQ(buffer, "") << "it does not fit";
    EXPECT_EQ(Jw32GetModulePath(nullptr, buffer, length + 1), 1);
    EXPECT_EQ(buffer, folder);
    EXPECT_EQ(Jw32GetModulePath(reinterpret_cast<HINSTANCE>(path), buffer, MAX_PATH), 0);
    EXPECT_STREQ(buffer, "") << "of a stranger";
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
    const std::string none_;
};

TEST_F(Temporary, DirectoryCompletesTheEnvironment) {
    const auto longForm = c("A rather long name"), other = c("other");
    char text[MAX_PATH] = "", system[MAX_PATH] = "";
    Jw32DirectoryCreate(longForm.c_str());
    ASSERT_GT(GetShortPathNameA(longForm.c_str(), text, MAX_PATH), 0u);
    const std::string shortForm = text;
    gives({shortForm, other}, longForm, {shortForm, other});
    gives({none_, shortForm}, longForm, {shortForm, shortForm});
    gives({"Q:\\no\\", none_}, "Q:\\no\\", {"Q:\\no\\", none_});
    ASSERT_NE(GetSystemDirectoryA(system, MAX_PATH), 0u);
    const auto own = system + std::string("\\~Temp");
    gives({none_, none_}, own, {own, own});
    EXPECT_TRUE(exists(own));
    removeTree(own);
}

TEST_F(Temporary, DirectoryIsCutTo520BytesAndAnAssignmentIsNot) {
    const auto fits = "Q:\\" + std::string(513, 'a'), tooLong = fits + "b";
    gives({none_, fits}, fits, {fits, fits});
    gives({none_, tooLong}, tooLong, {none_, tooLong});
    gives({tooLong + "cdefg", none_}, tooLong + "cde", {tooLong + "cdefg", none_});
}

TEST_F(Temporary, TextsAreCutToTheBufferAndTheirLengthIsTold) {
    const std::string text = "Q:\\some\\where\\deep_";  // 19 bytes
    kept_.set(text, none_);
    for (const DWORD size : {1u, 19u, 20u, 40u}) {
        std::string buffer(48, 'x'), expected = text.substr(0, size - 1);
        expected.resize(size);
        EXPECT_EQ(Jw32TempDirectory(buffer.data(), size), text.size());
        EXPECT_EQ(buffer, expected + std::string(48 - size, 'x')) << size;
    }
    kept_.set(none_, none_);
    char cut[] = "former";
    EXPECT_GT(Jw32TempFilename(cut, 5, d().c_str(), "jwt"), d("jwt").size());
    EXPECT_EQ(cut, d().substr(0, 4));
    EXPECT_EQ(kept_.get("TMP"), "") << "a given directory is no matter of the environment";
    char byte = 'x';
    EXPECT_EQ(Jw32TempDirectory(&byte, 0) + Jw32TempDirectory(nullptr, 9), 0u);
    EXPECT_EQ(Jw32TempFilename(&byte, 0, "", "") + Jw32TempFilename(nullptr, 9, "", ""), 0u);
    EXPECT_EQ(byte, 'x');
}

TEST_F(Temporary, NameIsThatOfNoFileInTheTemporaryDirectory) {
    kept_.set(none_, c());
    char name[MAX_PATH] = "";
    const DWORD length = Jw32TempFilename(name, MAX_PATH, nullptr, "jwt");
    EXPECT_EQ(length, std::string(name).size());
    EXPECT_TRUE(std::string(name).starts_with(c("jwt"))) << name;
    EXPECT_FALSE(exists(name));
    EXPECT_EQ(kept_.get("TMP"), c()) << "the directory was not asked for";
}

TEST_F(Temporary, FileIsMadeAsItsDispositionAndFlagsTell) {
    kept_.set(none_, none_);
    const auto create = [this](DWORD disposition) {
        return reported(Jw32CreateTempFile, d(), "jwt", GENERIC_WRITE, disposition,
                        FILE_FLAG_DELETE_ON_CLOSE, 0);
    };
    const auto made = create(CREATE_NEW);
    EXPECT_EQ(made, Report(made.result));
    EXPECT_EQ(Jw32FileWrite(made.result, "text", 4), 1);
    EXPECT_EQ(Jw32FileFind(d("jwt*").c_str()), 1) << "it is not in the directory";
    CloseHandle(made.result);
    EXPECT_EQ(Jw32FileFind(d("jwt*").c_str()), 0) << "it stays";
    EXPECT_EQ(create(OPEN_EXISTING), Report(INVALID_HANDLE_VALUE, ERROR_FILE_NOT_FOUND));
}

class DirectoryLink : public ScratchDrives {
  protected:
    DirectoryLink() { write(c("file"), "content"); }
    int make(const std::string& link, const std::string& target, int dryRun = 0) const {
        return Jw32MakeDirectoryLink(c(link).c_str(), target.c_str(), dryRun);
    }
};

TEST_F(DirectoryLink, NeedsALinkOnAnAbsolutePathAndATarget) {
    const auto link = c("link"), below = c("missing\\link");
    const char *const at = link.c_str(), *const deep = below.c_str();
    const std::pair<const char*, const char*> rows[] = {{nullptr, at}, {"", at},     {at, nullptr},
                                                        {at, ""},      {"link", at}, {"a\\b", at},
                                                        {"Q:\\a", at}, {deep, at}};
    for (const auto& [from, to] : rows) {
        EXPECT_EQ(Jw32MakeDirectoryLink(from, to, 0), 0) << from << " to " << to;
        EXPECT_EQ(Jw32MakeDirectoryLink(from, to, 1), 0) << from << " to " << to;
    }
    EXPECT_FALSE(exists(link) || exists(c("missing")));
}

// Known difference: the volumes of Wine have no reparse points.
TEST_F(DirectoryLink, IsTriedOutAndMadeWhereTheVolumeHasLinks) {
    const int made = onWine() ? 0 : 1;
    Jw32DirectoryCreate(c("empty").c_str());
    EXPECT_EQ(make("empty", c(), 1) + make("link", c(), 7), 2 * made);
    EXPECT_EQ(attributes(c("empty")), DWORD{FILE_ATTRIBUTE_DIRECTORY}) << "after a dry run";
    EXPECT_FALSE(exists(c("link"))) << "after a dry run";
    EXPECT_EQ(make("empty", c()) + make("link", c()), 2 * made);
    EXPECT_EQ(exists(c("empty\\file")) + exists(c("link\\file")), 2 * made);
}

TEST_F(DirectoryLink, StandsForItsTargetUntilItIsRemoved) {
    if (onWine()) GTEST_SKIP() << "the volume has no links";
    ASSERT_EQ(make("link", c("target\\")), 1) << "to nothing";
    EXPECT_EQ(make("link", d()) + make("link", d(), 1), 0) << "it is a link already";
    EXPECT_EQ(attributes(c("link")),
              DWORD{FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT});
    Jw32DirectoryCreate(c("target").c_str());
    write(c("link\\file"), "content");
    EXPECT_EQ(read(c("target\\file")), "content");
    removeTree(c("link"));
    EXPECT_FALSE(exists(c("link")));
    EXPECT_TRUE(exists(c("target\\file"))) << "it goes without its target";
    ASSERT_EQ(make("root", "D:\\"), 1);
    EXPECT_TRUE(exists(c("root") + d().substr(2)));
}

}  // namespace
