// What searches and copies tell of files beside their names, and positions beyond 32 bits.
#include <gmock/gmock.h>

#include <cstring>

#include "contract_files.h"

namespace {

class Records : public ContractFiles {
  protected:
    WIN32_FIND_DATAW record(const std::string& name) const {
        WIN32_FIND_DATAW result{};
        EXPECT_TRUE(FindClose(FindFirstFileW(Wide(c(name)), &result))) << name;
        return result;
    }
    std::string shortName(const std::string& name) const {
        return narrow(record(name).cAlternateFileName);
    }
};

TEST_F(Records, DescribeFilesAndDirectories) {
    const auto file = record("FILE"), folder = record("folder");
    EXPECT_EQ(file.dwFileAttributes, DWORD{FILE_ATTRIBUTE_ARCHIVE});
    EXPECT_EQ(file.nFileSizeLow, 7u);
    EXPECT_EQ(folder.dwFileAttributes, DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_EQ(folder.nFileSizeLow, 0u);
    for (const auto& time : {file.ftCreationTime, file.ftLastAccessTime, file.ftLastWriteTime}) {
        EXPECT_NEAR(time.dwHighDateTime, 0x02000000u, 0x00400000u) << "not in this century";
    }
}

TEST_F(Records, TellAShortNameThatOpensTheFile) {
    for (const char* const name : {"a long name.html", "noextension", "one.txt"}) {
        write(c(name), "content");
    }
    EXPECT_EQ(shortName("one.txt"), "") << "has the form already";
    EXPECT_NE(shortName("noextension"), "");
    const auto name = shortName("a long name.html");
    EXPECT_THAT(name, testing::MatchesRegex("\\S+\\.HTM"));
    EXPECT_LE(name.size(), 12u) << name;
    EXPECT_EQ(narrow(record(name).cFileName), "a long name.html");
    char text[MAX_PATH] = "", cut[5] = "";
    const DWORD length = GetShortPathNameA(c("a LONG name.html").c_str(), text, sizeof text);
    EXPECT_EQ(std::strlen(text), length);
    EXPECT_EQ(read(text), "content") << text;
    EXPECT_EQ(GetShortPathNameA(c("a long name.html").c_str(), cut, 5), length + 1) << "the room";
    EXPECT_EQ(codeOf(GetShortPathNameA(c("missing").c_str(), text, MAX_PATH)),
              DWORD{ERROR_FILE_NOT_FOUND});
}

TEST_F(Records, KeepTheTimeOfWritingInACopy) {
    Sleep(20);
    EXPECT_TRUE(CopyFileW(Wide(c("file")), Wide(c("to")), FALSE));
    const auto source = record("file"), target = record("to");
    EXPECT_EQ(std::memcmp(&source.ftLastWriteTime, &target.ftLastWriteTime, sizeof(FILETIME)), 0);
}

TEST_F(Records, HaveASizeOf64Bits) {
    void* const file = Jw32FileOpen(c("file").c_str(), GENERIC_ALL, OPEN_EXISTING, 0, 0);
    LONG high = 1;
    DWORD sizeHigh = 4711;
    EXPECT_EQ(SetFilePointer(file, 5, &high, FILE_BEGIN), 5u);
    EXPECT_EQ(high, 1);
    EXPECT_TRUE(SetEndOfFile(file));
    EXPECT_EQ(GetFileSize(file, &sizeHigh), 5u);
    EXPECT_EQ(sizeHigh, 1u);
    // Known difference: Wine gives the low half of a position that needs the high part.
    const DWORD code = codeOf(SetFilePointer(file, 0, nullptr, FILE_END) != 0xFFFFFFFF);
    EXPECT_EQ(code, onWine() ? DWORD{ERROR_SUCCESS} : ERROR_INVALID_PARAMETER);
    CloseHandle(file);
}

}  // namespace
