// Names in code pages with double-byte characters, whose second byte can be that of a backslash,
// and names whose bytes the code page does not know.
#include <jw32/file_names.h>
#include <jw32/paths.h>
#include <mbstring.h>

#include <filesystem>
#include <fstream>

#include "core/machine.h"
#include "support/scratch_drives.h"
#include "support/triple.h"
#include "support/wide.h"

namespace {

namespace fs = std::filesystem;

// In code page 932: two characters that end in 0x5C, and what the host calls them.
const std::string so = "\x83\x5C", noh = "\x94\x5C";
const std::string soOnHost = "\u30BD", nohOnHost = "\u80FD";

// The scratch drives of a machine with another code page.
template <std::uint32_t CodePage>
class OnCodePage : public ScratchDrives {
  protected:
    // Where a name of the folder on C: lies on the host. The root of C: is the current directory.
    fs::path host(const std::string& name) const { return c().substr(3) + "/" + name; }
    // Whether a search in the folder goes on to the name.
    bool lists(const std::string& name) const {
        WIN32_FIND_DATAW first;
        WIN32_FIND_DATAA record{};
        const HANDLE search = FindFirstFileW(Wide(c("*")), &first);
        bool found = false;
        while (FindNextFileA(search, &record)) found = found || record.cFileName == name;
        FindClose(search);
        return found;
    }

  private:
    const machine::ScopedMachine installed_{[] {
        auto changed = machine::current();
        changed.codePage = CodePage;
        return changed;
    }()};
};

using DoubleByteNames = OnCodePage<932>;
using SingleByteNames = OnCodePage<1252>;
using Utf8Names = OnCodePage<65001>;

TEST_F(DoubleByteNames, AreNoSeparatorsWhenDirectoriesAreMade) {
    EXPECT_EQ(reported(Jw32DirectoryCreate, c(noh + "\\a\\" + so).substr(3)), Report(1));
    EXPECT_TRUE(fs::is_directory(host(nohOnHost + "/a/" + soOnHost)));
    EXPECT_EQ(std::distance(fs::recursive_directory_iterator(host("")), {}), 3) << "has halves";
    EXPECT_EQ(reported(Jw32DirectoryCreate, so + "\\a"), Report(0, ERROR_PATH_NOT_FOUND));
    WIN32_FIND_DATAA record{};
    FindClose(Jw32DirectoryFind(c(noh + "\\").c_str(), &record));
    EXPECT_EQ(record.cFileName, noh);
    EXPECT_NE(record.cAlternateFileName[0], '\0') << "the form 8.3 knows ASCII only";
}

TEST_F(DoubleByteNames, OfFilesGoThroughEveryOperation) {
    write(c(so), "content");
    EXPECT_TRUE(fs::exists(host(soOnHost)));
    EXPECT_TRUE(lists(so));
    EXPECT_EQ(Jw32FileMove(c(so).c_str(), c(noh + ".txt").c_str()), 1);
    EXPECT_EQ(Jw32FileMove(c(noh + ".txt").c_str(), d(so).c_str()), 1) << "to another drive";
    EXPECT_EQ(read(d(so)), "content");
}

TEST_F(DoubleByteNames, FollowThePathRules) {
    EXPECT_EQ(Jw32FilenameIsValid(so.c_str()), 1);
    EXPECT_EQ(Jw32PathIsValid(c(so + "\\\x83|").c_str(), 0, nullptr), 1);
    EXPECT_EQ(Jw32PathIsValid(c(so + "\\\\" + noh).c_str(), 0, nullptr), 0);
    EXPECT_EQ(Jw32PathIsValid(("C:\\" + so + "\\..\\x").c_str(), 0, nullptr), 1);
    EXPECT_EQ(Jw32FilenameIsEqual((so + ".TXT").c_str(), (so + ".txt").c_str()), 1);
    EXPECT_EQ(Jw32FilenameIsEqual("\x83\x41.x", "\x83\x61.x"), 0) << "the second byte has no case";
    EXPECT_EQ(Jw32PathIsEqual(("C:\\" + so + "\\A").c_str(), ("c:\\" + so + "\\a").c_str()), 1);
    char name[] = "\x83\x5C\\b";
    EXPECT_EQ(Jw32ReplaceInvalidFilenameCharacters(name, '_', 3), 1u);
    EXPECT_STREQ(name, "\x83\x5C_b");
    EXPECT_EQ(Jw32ReplaceInvalidFilenameCharacters(name, '_', 0), 4u) << "a second half is left";
}

TEST_F(DoubleByteNames, KeepTheirFormsWhole) {
    write(c(so + " long name"), "content");
    char text[MAX_PATH] = "", *last = nullptr;
    ASSERT_GT(GetFullPathNameA(c("x\\..\\" + so).c_str(), MAX_PATH, text, &last), 0u);
    EXPECT_EQ(text, c(so));
    EXPECT_EQ(last, so);
    ASSERT_GT(GetShortPathNameA(c(so + " long name").c_str(), text, MAX_PATH), 0u);
    EXPECT_EQ(read(text), "content") << text;
}

TEST_F(DoubleByteNames, AreSteppedAndSearchedByCharacters) {
    const auto* const text = reinterpret_cast<const unsigned char*>("\x83\x5C\\\x94\x5C");
    EXPECT_EQ(_mbsrchr(text, '\\') - text, 2);
    EXPECT_EQ(_mbschr(text, 0x945C) - text, 3);
    unsigned char target[4] = "xxx";
    EXPECT_EQ(_mbsnbcpy_s(target, sizeof target, text, _TRUNCATE), STRUNCATE);
    EXPECT_STREQ(reinterpret_cast<char*>(target), "\x83\x5C\\");
    EXPECT_EQ(_mbsnbcpy_s(target, sizeof target, text + 2, 2), 0);
    EXPECT_STREQ(reinterpret_cast<char*>(target), "\\") << "half a character";
}

TEST_F(DoubleByteNames, WithBytesOfNoCharacterAreNamesAllTheSame) {
    for (const char* const name : {"\x83", "a\x83", "\x83 b", "\x81\xAD", "\xFF\xA0", "\x83\x01"}) {
        EXPECT_EQ(reported(Jw32FileFind, c(name)), Report(0, ERROR_FILE_NOT_FOUND)) << name;
        write(c(name), "content");
        EXPECT_EQ(read(c(name)), "content");
        EXPECT_TRUE(DeleteFileW(Wide(c(name))));
        EXPECT_EQ(Jw32PathIsEqual(c(name).c_str(), c(name).c_str()), 1);
    }
    const unsigned char half[] = {0x83, 0, '\\', 0};
    EXPECT_EQ(_mbschr(half, '\\'), nullptr) << "looks behind the terminator";
}

TEST_F(SingleByteNames, EndWhereABackslashStands) {
    EXPECT_EQ(Jw32DirectoryCreate(c(so + "x").c_str()), 1);
    EXPECT_TRUE(fs::is_directory(host("\u0192/x")));
    EXPECT_EQ(Jw32FilenameIsValid(so.c_str()), 0);
    write(c("\x80 \xE4\x81"), "content");
    EXPECT_TRUE(fs::exists(host("\u20AC \u00E4\u0081")));
    EXPECT_EQ(read(c("\x80 \xC4\x81")), "content") << "without regard to case";
    std::ofstream(host(nohOnHost + ".txt")) << "content";
    EXPECT_TRUE(lists("?.txt")) << "for a character that the code page lacks";
}

TEST_F(Utf8Names, OfTheHostNeedNotBeValid) {
    std::ofstream(host("bad\xFFname")) << "content";
    EXPECT_EQ(Jw32FileFind(c("bad\xFFname").c_str()), 0);
    removeTree(c());
    EXPECT_FALSE(fs::exists(host(""))) << "cannot be had by the name that was found";
}

}  // namespace
