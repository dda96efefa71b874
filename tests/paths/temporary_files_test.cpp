// The temporary directory, temporary names and files, in both builds.
#include <gtest/gtest.h>
#include <jw32/directories.h>
#include <jw32/files.h>
#include <jw32/temporary_files.h>

#include <string>

#include "support/scratch_drives.h"
#include "support/temporary_variables.h"
#include "support/triple.h"

namespace {

class Temporary : public ScratchDrives {
  protected:
    // A folder with a long name, and its short form.
    std::string longName() const {
        const auto name = c("A rather long name");
        Jw32DirectoryCreate(name.c_str());
        return name;
    }
    static std::string shortForm(const std::string& path) {
        char form[MAX_PATH] = "";
        GetShortPathNameA(path.c_str(), form, MAX_PATH);
        EXPECT_NE(form, path);
        return form;
    }
    static std::string directory() {
        char buffer[600] = "";
        const DWORD length = Jw32TempDirectory(buffer, sizeof buffer);
        EXPECT_EQ(length, std::string(buffer).size());
        return buffer;
    }
    static std::string get(const char* name) { return TemporaryVariables::get(name); }
    static void set(const std::string& tmp, const std::string& temp) {
        TemporaryVariables::set(tmp, temp);
    }

  private:
    TemporaryVariables kept_;
};

TEST_F(Temporary, DirectoryIsTheLongFormOfTmp) {
    const auto name = longName();
    set(shortForm(name), c("other"));
    EXPECT_EQ(directory(), name);
    EXPECT_EQ(get("TMP"), shortForm(name));
    EXPECT_EQ(get("TEMP"), c("other"));
}

TEST_F(Temporary, DirectoryThatDoesNotExistIsGivenAsItStands) {
    set("Q:\\missing\\", "");
    EXPECT_EQ(directory(), "Q:\\missing\\");
    EXPECT_EQ(get("TEMP"), "");
}

TEST_F(Temporary, DirectoryOfTempAloneBecomesThatOfTmp) {
    const auto name = longName();
    set("", shortForm(name));
    EXPECT_EQ(directory(), name);
    EXPECT_EQ(get("TMP"), shortForm(name));
    EXPECT_EQ(get("TEMP"), shortForm(name));
    EXPECT_EQ(directory(), name);
}

TEST_F(Temporary, DirectoryIsMadeWhereTheEnvironmentNamesNone) {
    set("", "");
    char system[MAX_PATH] = "";
    ASSERT_NE(GetSystemDirectoryA(system, MAX_PATH), 0u);
    const auto expected = std::string(system) + "\\~Temp";
    EXPECT_EQ(directory(), expected);
    EXPECT_TRUE(exists(expected));
    EXPECT_EQ(get("TMP"), expected);
    EXPECT_EQ(get("TEMP"), expected);
    EXPECT_EQ(directory(), expected);
    removeTree(expected);
}

TEST_F(Temporary, DirectoryIsCutToTheBufferAndItsLengthIsTold) {
    const std::string text = "Q:\\some\\where\\deep_";  // 19 bytes
    set(text, "");
    for (const DWORD size : {1u, 5u, 19u, 20u, 40u}) {
        std::string buffer(48, 'x');
        EXPECT_EQ(Jw32TempDirectory(buffer.data(), size), text.size());
        const auto kept = text.substr(0, size - 1);
        const auto expected = kept + std::string(size - kept.size(), '\0');
        EXPECT_EQ(buffer, expected + std::string(48 - size, 'x')) << "size " << size;
    }
    char byte = 'x';
    EXPECT_EQ(Jw32TempDirectory(&byte, 0), 0u);
    EXPECT_EQ(Jw32TempDirectory(nullptr, 10), 0u);
    EXPECT_EQ(byte, 'x');
}

TEST_F(Temporary, DirectoryIsCutTo520BytesAndAnAssignmentIsNot) {
    const std::string fits = "Q:\\" + std::string(513, 'a'), tooLong = fits + "b";
    set("", fits);
    EXPECT_EQ(directory(), fits);
    EXPECT_EQ(get("TMP"), fits);
    set("", tooLong);
    EXPECT_EQ(directory(), tooLong);
    EXPECT_EQ(get("TMP"), "");
    set("Q:\\" + std::string(600, 'a'), "");
    EXPECT_EQ(directory(), "Q:\\" + std::string(517, 'a'));
}

TEST_F(Temporary, NameIsThatOfNoFileInTheDirectoryOfTmp) {
    set(c(), "");
    for (const char* const wanted : {static_cast<const char*>(nullptr), "C:\\"}) {
        char name[MAX_PATH] = "";
        const DWORD length = Jw32TempFilename(name, sizeof name, wanted, "jwt");
        EXPECT_EQ(std::string(name).substr(0, length).rfind(c("jwt"), 0), 0u) << name;
        EXPECT_EQ(length, std::string(name).size());
        EXPECT_FALSE(exists(name));
    }
    char name[MAX_PATH] = "";
    EXPECT_GT(Jw32TempFilename(name, sizeof name, nullptr, nullptr), c().size() + 1);
    EXPECT_EQ(std::string(name).rfind(c() + "\\", 0), 0u) << name;
}

TEST_F(Temporary, NameLiesInTheGivenDirectoryWithoutTmp) {
    set("", "");
    char name[MAX_PATH] = "";
    const DWORD length = Jw32TempFilename(name, sizeof name, d().c_str(), "jwt");
    EXPECT_EQ(std::string(name).rfind(d("jwt"), 0), 0u) << name;
    std::string cut(MAX_PATH, 'x');
    EXPECT_EQ(Jw32TempFilename(cut.data(), 5, d().c_str(), "jwt"), length);
    EXPECT_EQ(cut.substr(0, 6), d().substr(0, 4) + '\0' + 'x');
    EXPECT_EQ(Jw32TempFilename(name, 0, d().c_str(), "jwt"), 0u);
    EXPECT_EQ(Jw32TempFilename(nullptr, 5, d().c_str(), "jwt"), 0u);
    EXPECT_EQ(get("TMP"), "") << "a given directory is no matter of the environment";
}

TEST_F(Temporary, FileIsMadeAsItsFlagsTell) {
    set("", "");
    const auto isThere = [this] { return Jw32FileFind(d("jwt*").c_str()) != 0; };
    Triple triple;
    void* const file =
        Jw32CreateTempFile(d().c_str(), "jwt", GENERIC_READ | GENERIC_WRITE, CREATE_NEW,
                           FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, 0, &triple.code,
                           triple.text, triple.size);
    ASSERT_NE(file, INVALID_HANDLE_VALUE) << triple;
    EXPECT_TRUE(triple.isClear()) << triple;
    EXPECT_EQ(Jw32FileWrite(file, "text", 4), 1);
    EXPECT_TRUE(isThere());
    CloseHandle(file);
    EXPECT_FALSE(isThere());
}

TEST_F(Temporary, FileOfADispositionThatNeedsAnExistingOneIsAFailure) {
    set("", "");
    Triple triple;
    EXPECT_EQ(Jw32CreateTempFile(d().c_str(), "jwt", GENERIC_READ, OPEN_EXISTING, 0, 0,
                                 &triple.code, triple.text, triple.size),
              INVALID_HANDLE_VALUE);
    EXPECT_TRUE(triple.tells(ERROR_FILE_NOT_FOUND)) << triple;
}

}  // namespace
