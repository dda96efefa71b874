// The temporary directory, temporary names and files, in both builds.
#include <gtest/gtest.h>
#include <jw32/temporary_files.h>

#include "support/scratch_drives.h"
#include "support/temporary_variables.h"
#include "support/triple.h"

namespace {

class Temporary : public ScratchDrives {
  protected:
    using Pair = std::pair<std::string, std::string>;

    static std::string directory() {
        char buffer[600] = "";
        const DWORD length = Jw32TempDirectory(buffer, sizeof buffer);
        EXPECT_EQ(length, std::string(buffer).size());
        return buffer;
    }
    // The variables after the call; the two texts of a pair are TMP and TEMP.
    void gives(const Pair& before, const std::string& text, const Pair& after) {
        kept_.set(before.first, before.second);
        EXPECT_EQ(directory(), text);
        EXPECT_EQ(Pair(kept_.get("TMP"), kept_.get("TEMP")), after);
        EXPECT_EQ(directory(), text) << "the second time";
    }
    TemporaryVariables kept_;
};

TEST_F(Temporary, DirectoryCompletesTheEnvironment) {
    const std::string longForm = c("A rather long name"), missing = "Q:\\missing\\", none;
    Jw32DirectoryCreate(longForm.c_str());
    char text[MAX_PATH] = "", system[MAX_PATH] = "";
    GetShortPathNameA(longForm.c_str(), text, MAX_PATH);
    const std::string shortForm = text;
    ASSERT_NE(shortForm, longForm);
    gives({shortForm, c("other")}, longForm, {shortForm, c("other")});
    gives({none, shortForm}, longForm, {shortForm, shortForm});
    gives({missing, none}, missing, {missing, none});
    ASSERT_NE(GetSystemDirectoryA(system, MAX_PATH), 0u);
    const auto own = system + std::string("\\~Temp");
    gives({none, none}, own, {own, own});
    EXPECT_TRUE(exists(own));
    removeTree(own);
}

TEST_F(Temporary, DirectoryIsCutTo520BytesAndAnAssignmentIsNot) {
    const std::string fits = "Q:\\" + std::string(513, 'a'), tooLong = fits + "b", none;
    gives({none, fits}, fits, {fits, fits});
    gives({none, tooLong}, tooLong, {none, tooLong});
    gives({tooLong + "cdefg", none}, tooLong + "cde", {tooLong + "cdefg", none});
}

TEST_F(Temporary, TextsAreCutToTheBufferAndTheirLengthIsTold) {
    const std::string text = "Q:\\some\\where\\deep_";  // 19 bytes
    kept_.set(text, "");
    for (const DWORD size : {1u, 5u, 19u, 20u, 40u}) {
        std::string buffer(48, 'x');
        EXPECT_EQ(Jw32TempDirectory(buffer.data(), size), text.size());
        auto expected = text.substr(0, size - 1);
        expected.resize(size, '\0');
        EXPECT_EQ(buffer, expected + std::string(48 - size, 'x')) << size;
    }
    kept_.set("", "");
    std::string cut(MAX_PATH, 'x');
    EXPECT_GT(Jw32TempFilename(cut.data(), 5, d().c_str(), "jwt"), d("jwt").size());
    EXPECT_EQ(cut.substr(0, 6), d().substr(0, 4) + '\0' + 'x');
    EXPECT_EQ(kept_.get("TMP"), "") << "a given directory is no matter of the environment";
    char byte = 'x';
    EXPECT_EQ(Jw32TempDirectory(&byte, 0), 0u);
    EXPECT_EQ(Jw32TempDirectory(nullptr, 10), 0u);
    EXPECT_EQ(Jw32TempFilename(&byte, 0, d().c_str(), "jwt"), 0u);
    EXPECT_EQ(Jw32TempFilename(nullptr, 5, d().c_str(), "jwt"), 0u);
    EXPECT_EQ(byte, 'x');
}

TEST_F(Temporary, NameIsThatOfNoFileInTheTemporaryDirectory) {
    kept_.set("", c());
    char name[MAX_PATH] = "";
    const DWORD length = Jw32TempFilename(name, MAX_PATH, nullptr, "jwt");
    EXPECT_EQ(length, std::string(name).size());
    EXPECT_EQ(std::string(name).rfind(c("jwt"), 0), 0u) << name;
    EXPECT_FALSE(exists(name));
    EXPECT_EQ(kept_.get("TMP"), c()) << "the directory was not asked for";
}

TEST_F(Temporary, FileIsMadeAsItsDispositionAndFlagsTell) {
    kept_.set("", "");
    const auto create = [this](DWORD disposition, Triple& triple) {
        return triple.of(Jw32CreateTempFile, d().c_str(), "jwt", GENERIC_WRITE, disposition,
                         FILE_FLAG_DELETE_ON_CLOSE, 0);
    };
    const auto isThere = [this] { return Jw32FileFind(d("jwt*").c_str()) != 0; };
    Triple made, missing;
    void* const file = create(CREATE_NEW, made);
    EXPECT_TRUE(made.isClear()) << made;
    EXPECT_EQ(Jw32FileWrite(file, "text", 4), 1);
    EXPECT_TRUE(isThere());
    CloseHandle(file);
    EXPECT_FALSE(isThere());
    EXPECT_EQ(create(OPEN_EXISTING, missing), INVALID_HANDLE_VALUE);
    EXPECT_TRUE(missing.tells(ERROR_FILE_NOT_FOUND)) << missing;
}

}  // namespace
