// Names in code pages with double-byte characters, whose second byte can be that of a backslash,
// and names whose bytes the code page does not know.
#include <jw32/file_names.h>
#include <jw32/paths.h>
#include <mbstring.h>

#include <cstring>
#include <filesystem>
#include <fstream>

#include "machine/machine.h"
#include "support/scratch_drives.h"
#include "support/triple.h"
#include "support/wide.h"

namespace {

namespace fs = std::filesystem;

// In code page 932: two characters that end in 0x5C, and what the host calls them.
const std::string so = "\x83\x5C", noh = "\x94\x5C";
const std::string soOnHost = "\u30BD", nohOnHost = "\u80FD";

template <std::uint32_t CodePage>
class WithCodePage {
    static machine::Machine changed() {
        auto result = machine::current();
        result.codePage = CodePage;
        return result;
    }
    const machine::Installed installed_{changed()};
};

// The scratch drives of a machine with another code page.
template <std::uint32_t CodePage>
class OnCodePage : private WithCodePage<CodePage>, public ScratchDrives {
  protected:
    // Where a name of the folder on C: lies on the host.
    fs::path host(const std::string& name) const {
        return fs::path(machine::current().drives.front().folder) / c().substr(3) / name;
    }
    static const unsigned char* bytes(const std::string& text) {
        return reinterpret_cast<const unsigned char*>(text.c_str());
    }
    Triple triple;
};

using DoubleByteNames = OnCodePage<932>;
using SingleByteNames = OnCodePage<1252>;
using Utf8Names = OnCodePage<65001>;

TEST_F(DoubleByteNames, AreNoSeparatorsWhenDirectoriesAreMade) {
    EXPECT_EQ(Jw32DirectoryCreate(c(noh + "\\a\\" + so).c_str()), 1);
    EXPECT_TRUE(fs::is_directory(host(nohOnHost + "/a/" + soOnHost)));
    EXPECT_EQ(Jw32DirectoryExist(c(noh + "\\a\\" + so).c_str()), 1) << "loses its second byte";
    EXPECT_EQ(Jw32DirectoryExist(c(noh + "\\").c_str()), 1);
}

TEST_F(DoubleByteNames, OfFilesGoThroughEveryOperation) {
    write(c(so), "content");
    EXPECT_TRUE(fs::exists(host(soOnHost)));
    EXPECT_EQ(Jw32FileSize(c(so).c_str()), 7);
    EXPECT_EQ(Jw32FileFind(c(so).c_str()), 1);
    EXPECT_EQ(Jw32FileMove(c(so).c_str(), c(noh + ".txt").c_str()), 1);
    EXPECT_TRUE(fs::exists(host(nohOnHost + ".txt")));
    EXPECT_EQ(Jw32FileMove(c(noh + ".txt").c_str(), d(so).c_str()), 1) << "to another drive";
    EXPECT_EQ(read(d(so)), "content");
    EXPECT_EQ(Jw32FileHide(d(so).c_str()), 1);
    EXPECT_TRUE(attributes(d(so)) & FILE_ATTRIBUTE_HIDDEN);
    EXPECT_EQ(triple.of(Jw32FileFind, c(so).c_str()), 0);
    EXPECT_TRUE(triple.tells(ERROR_FILE_NOT_FOUND)) << triple;
}

TEST_F(DoubleByteNames, AreFoundAsTheyWereGiven) {
    Jw32DirectoryCreate(c(noh).c_str());
    write(c(noh + "\\" + so), "");
    WIN32_FIND_DATAA record{};
    FindClose(Jw32DirectoryFind(c(noh).c_str(), &record));
    EXPECT_EQ(record.cFileName, noh);
    EXPECT_NE(record.cAlternateFileName[0], '\0') << "the form 8.3 knows ASCII only";
    WIN32_FIND_DATAW first;
    const HANDLE search = FindFirstFileW(Wide(c(noh + "\\*")), &first);
    bool found = false;
    while (FindNextFileA(search, &record)) found = found || record.cFileName == so;
    FindClose(search);
    EXPECT_TRUE(found);
}

TEST_F(DoubleByteNames, LongerThanThePlaceOfAConversionAreWhole) {
    std::string name;
    while (name.size() < 150) name += so + "A";
    write(c(name), "content");
    EXPECT_EQ(read(c(name)), "content");
}

TEST_F(DoubleByteNames, FollowThePathRules) {
    EXPECT_EQ(Jw32FilenameIsValid(so.c_str()), 1);
    EXPECT_EQ(Jw32PathIsValid(c(so + "\\" + noh).c_str(), 0, nullptr), 1);
    EXPECT_EQ(Jw32PathIsValid(c(so + "\\\\" + noh).c_str(), 0, nullptr), 0);
    EXPECT_EQ(Jw32PathIsValid(("C:\\" + so + "\\..\\x").c_str(), 0, nullptr), 1);
    EXPECT_EQ(Jw32FilenameIsEqual((so + ".TXT").c_str(), (so + ".txt").c_str()), 1);
    EXPECT_EQ(Jw32FilenameIsEqual("\x83\x41.x", "\x83\x61.x"), 0) << "the second byte has no case";
    EXPECT_EQ(Jw32PathIsEqual(("C:\\" + so + "\\A").c_str(), ("c:\\" + so + "\\a").c_str()), 1);
    EXPECT_EQ(Jw32PathIsEqual(("C:\\" + so).c_str(), ("C:\\" + so + "\\").c_str()), 0);
    EXPECT_EQ(Jw32DriveIsEqual(("C:\\" + so).c_str(), ("c:\\" + noh).c_str()), 1);
    char name[] = "\x83\x5C\\b";
    EXPECT_EQ(Jw32ReplaceInvalidFilenameCharacters(name, '_', 3), 1u);
    EXPECT_STREQ(name, "\x83\x5C_b");
}

TEST_F(DoubleByteNames, KeepTheirFormsWhole) {
    write(c(so + " long name"), "content");
    char text[MAX_PATH] = "", *last = nullptr;
    ASSERT_GT(GetFullPathNameA((c() + "\\x\\..\\" + so).c_str(), MAX_PATH, text, &last), 0u);
    EXPECT_EQ(text, c(so));
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(last, so);
    ASSERT_GT(GetShortPathNameA(c(so + " long name").c_str(), text, MAX_PATH), 0u);
    EXPECT_EQ(read(text), "content") << text;
}

TEST_F(DoubleByteNames, AreSteppedAndSearchedByCharacters) {
    const std::string text = so + "\\" + noh;
    const auto* const start = bytes(text);
    EXPECT_EQ(_mbsinc(start) - start, 2);
    EXPECT_EQ(_mbschr(start, '\\') - start, 2);
    EXPECT_EQ(_mbschr(start, 0) - start, 5);
    EXPECT_EQ(_mbsrchr(start, '\\') - start, 2);
    EXPECT_EQ(_mbschr(start, 0x945C) - start, 3);
    EXPECT_EQ(_mbschr(start + 3, '\\'), nullptr);
    EXPECT_EQ(_mbsstr(start, bytes("\\" + noh)) - start, 2);
    EXPECT_EQ(_mbsstr(start, bytes("\x5C\x5C")), nullptr) << "a second byte and a backslash";
    unsigned char target[4] = "xxx";
    EXPECT_EQ(_mbsnbcpy_s(target, sizeof target, bytes("a" + so + so), _TRUNCATE), STRUNCATE);
    EXPECT_STREQ(reinterpret_cast<char*>(target), ("a" + so).c_str());
    EXPECT_EQ(_mbsnbcpy_s(target, sizeof target, bytes("a" + so + so), 2), 0);
    EXPECT_STREQ(reinterpret_cast<char*>(target), "a") << "half a character";
}

TEST_F(DoubleByteNames, WithBytesOfNoCharacterAreNamesAllTheSame) {
    for (const char* const name : {"\x83", "a\x83", "\x83 b", "\x81\xAD", "\xFF\xA0", "\x83\x01"}) {
        EXPECT_EQ(triple.of(Jw32FileFind, c(name).c_str()), 0);
        EXPECT_TRUE(triple.tells(ERROR_FILE_NOT_FOUND)) << triple;
        write(c(name), "content");
        EXPECT_EQ(read(c(name)), "content");
        EXPECT_TRUE(DeleteFileW(Wide(c(name))));
        EXPECT_EQ(Jw32PathIsEqual(c(name).c_str(), c(name).c_str()), 1);
    }
    const std::string half = "\x83";
    EXPECT_EQ(_mbschr(bytes(half), '\\'), nullptr) << "looks behind the terminator";
}

TEST_F(SingleByteNames, EndWhereABackslashStands) {
    EXPECT_EQ(Jw32DirectoryCreate(c(so + "x").c_str()), 1);
    EXPECT_TRUE(fs::is_directory(host("\u0192/x")));
    EXPECT_EQ(Jw32FilenameIsValid(so.c_str()), 0);
    write(c("\x80 \xE4\x81"), "content");
    EXPECT_TRUE(fs::exists(host("\u20AC \u00E4\u0081")));
    EXPECT_EQ(read(c("\x80 \xC4\x81")), "content") << "without regard to case";
}

TEST_F(SingleByteNames, StandInForWhatTheCodePageLacks) {
    std::ofstream(host(nohOnHost + ".txt")) << "content";
    WIN32_FIND_DATAW wide;
    const HANDLE search = FindFirstFileW(Wide(c("*.*")), &wide);
    WIN32_FIND_DATAA record{};
    bool found = false;
    while (FindNextFileA(search, &record)) {
        found = found || std::strcmp(record.cFileName, "?.txt") == 0;
    }
    FindClose(search);
    EXPECT_TRUE(found);
}

TEST_F(Utf8Names, OfTheHostNeedNotBeValid) {
    std::ofstream(host("bad\xFFname")) << "content";
    WIN32_FIND_DATAW record;
    const HANDLE search = FindFirstFileW(Wide(c("bad*")), &record);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    FindClose(search);
    char former[MAX_PATH];
    GetCurrentDirectoryA(MAX_PATH, former);
    ASSERT_TRUE(SetCurrentDirectoryA(c().c_str()));
    EXPECT_TRUE(DeleteFileW(record.cFileName)) << "cannot be had by the name that was found";
    EXPECT_TRUE(SetCurrentDirectoryA(former));
    EXPECT_EQ(Jw32FileFind(c("bad\xFFname").c_str()), 0);
}

}  // namespace
