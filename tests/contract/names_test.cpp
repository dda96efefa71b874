// Which names lead to a file, and the full and short forms of paths.
#include <gmock/gmock.h>

#include "contract_files.h"

namespace {

class Names : public ContractFiles {
  protected:
    void SetUp() override {
        makeFolder("A long folder name");
        write(c("file"), "content");
        write(c("A long folder name\\inner file.text"), "content");
    }
};

TEST_F(Names, LeadToTheFileInEveryForm) {
    for (const char* const name :
         {"file", "FILE", "file.", "file ", "file...", "file. .", "./file", "missing\\..\\file",
          "A long folder name\\..\\file", "A LONG folder name/../file", ".\\.\\file",
          "A long folder name.\\inner file.text", "\\file",
          "A long folder name\\\\inner file.text"}) {
        EXPECT_EQ(openCode(c(name)), 0u) << name;
    }
    EXPECT_EQ(openCode("\\\\?\\" + c("file")), 0u);
    EXPECT_EQ(openCode("\\\\.\\" + c("file")), 0u);
    EXPECT_EQ(openCode("\\\\?\\" + c("file.")), DWORD{ERROR_FILE_NOT_FOUND})
        << "behind the prefix a dot is a dot";
    EXPECT_EQ(openCode(c("..\\..\\..\\") + c("file").substr(3)), 0u) << ".. ends at the root";
}

TEST_F(Names, LeadNowhere) {
    const std::pair<const char*, DWORD> names[] = {
        {"C:\\missing\\file", ERROR_PATH_NOT_FOUND},
        {"COM9", ERROR_FILE_NOT_FOUND},
        {"C:\\lpt9.txt", ERROR_FILE_NOT_FOUND},
    };
    for (const auto& [name, code] : names) EXPECT_EQ(openCode(name), code) << name;
}

TEST_F(Names, LeadToNoOtherComputerOrDrive) {
    if (onWine()) GTEST_SKIP() << "known difference: " << wineMissesDrives << ", as with servers";
    EXPECT_EQ(openCode("Q:\\file"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(openCode("\\\\server\\share\\file"), DWORD{ERROR_BAD_NETPATH});
}

TEST_F(Names, OfDevicesStandInEveryFolder) {
    for (const char* const name : {"NUL", "nul", "nul.txt", "NUL:"}) {
        EXPECT_EQ(openCode(name), 0u) << name;
        EXPECT_EQ(openCode(c(name)), 0u) << name;
    }
    EXPECT_EQ(openCode("\\\\.\\NUL"), 0u);
    EXPECT_EQ(openCode(c("nulls")), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST_F(Names, MayHave255CharactersInAPart) {
    const auto folder = "\\\\?\\" + c();
    const auto longest = folder + "\\" + std::string(255, 'x');
    EXPECT_EQ(openCode(longest), DWORD{ERROR_FILE_NOT_FOUND});
    // Known difference: Wine does not find the name that Windows refuses.
    const DWORD tooLong = onWine() ? ERROR_FILE_NOT_FOUND : ERROR_INVALID_NAME;
    EXPECT_EQ(openCode(longest + "x"), tooLong);
    { const Opened file(Wide(longest), GENERIC_WRITE, 0, CREATE_NEW); }
    EXPECT_EQ(openCode(longest), 0u);
    EXPECT_TRUE(DeleteFileW(Wide(longest)));
}

TEST_F(Names, MakePathsOf259CharactersAtMost) {
    if (onWine()) GTEST_SKIP() << "known difference: Wine knows no limit";
    const auto longPath = [&](std::size_t length) {
        const auto start = c("A long folder name") + "\\";
        return start + std::string(length - start.size(), 'x');
    };
    EXPECT_EQ(openCode(longPath(259)), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(openCode(longPath(260)), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(openCode("\\\\?\\" + longPath(260)), DWORD{ERROR_FILE_NOT_FOUND});
}

struct Form {
    const char *path, *full;
};
std::ostream& operator<<(std::ostream& out, const Form& form) {
    return out << form.path;
}
class FullPath : public Names, public testing::WithParamInterface<Form> {};

TEST_P(FullPath, IsMadeFromTheTextAlone) {
    char full[512] = "";
    char* last = nullptr;
    const DWORD length = GetFullPathNameA(GetParam().path, sizeof full, full, &last);
    EXPECT_STREQ(full, GetParam().full);
    EXPECT_EQ(length, static_cast<DWORD>(lstrlenA(full)));
    const auto slash = std::string(full).rfind('\\');
    const bool hasLastPart = full[slash + 1] != '\0' && full[2] != '.';
    EXPECT_EQ(last, hasLastPart ? full + slash + 1 : nullptr);
    wchar_t wide[512];
    EXPECT_EQ(GetFullPathNameW(Wide(GetParam().path), 512, wide, nullptr), length);
    EXPECT_EQ(lstrlenW(wide), static_cast<int>(length));
}

INSTANTIATE_TEST_SUITE_P(
    Of, FullPath,
    testing::Values(
        Form{"C:\\a\\b", "C:\\a\\b"}, Form{"C:\\a\\..\\b", "C:\\b"},
        Form{"C:\\a\\.\\b\\", "C:\\a\\b\\"}, Form{"C:/a/b", "C:\\a\\b"},
        Form{"C:\\..\\..\\b", "C:\\b"}, Form{"C:\\a. ", "C:\\a"}, Form{"c:\\a", "c:\\a"},
        Form{"C:\\", "C:\\"}, Form{"Q:\\missing\\x", "Q:\\missing\\x"}, Form{"Q:x", "Q:\\x"},
        Form{"C:\\a*b?\\c|d", "C:\\a*b?\\c|d"}, Form{"C:\\a\\..", "C:\\"},
        Form{"C:\\a\\b\\..", "C:\\a"}, Form{"\\\\server\\share\\a\\..\\b", "\\\\server\\share\\b"},
        Form{"\\\\server\\share\\..\\..\\b", "\\\\server\\share\\b"},
        Form{"\\\\?\\C:\\a\\..\\b", "\\\\?\\C:\\b"},
        Form{"\\\\server\\share\\", "\\\\server\\share\\"}, Form{"C:\\a\\\\b", "C:\\a\\b"},
        Form{"C:\\a\\nul.txt", "\\\\.\\nul"}, Form{"com1:", "\\\\.\\com1"}));

TEST_F(Names, HaveNoFullPathWhenEmpty) {
    char full[8];
    EXPECT_EQ(GetFullPathNameA("", sizeof full, full, nullptr), 0u);
    EXPECT_EQ(GetFullPathNameA(nullptr, sizeof full, full, nullptr), 0u);
}

TEST_F(Names, GiveTheFullPathByTheCurrentDirectory) {
    char former[260], full[260];
    GetCurrentDirectoryA(sizeof former, former);
    ASSERT_TRUE(SetCurrentDirectoryA(c().c_str()));
    const std::pair<const char*, std::string> paths[] = {
        {"x", c("x")},    {".", c()},         {"x\\..\\y", c("y")},    {"C:x", c("x")},
        {"\\x", "C:\\x"}, {"..\\x", "C:\\x"}, {"file\\", c("file\\")},
    };
    for (const auto& [path, expected] : paths) {
        EXPECT_EQ(GetFullPathNameA(path, sizeof full, full, nullptr), expected.size()) << path;
        EXPECT_EQ(full, expected) << path;
    }
    EXPECT_EQ(GetFullPathNameA("x", 4, full, nullptr), c("x").size() + 1) << "the room it needs";
    EXPECT_TRUE(SetCurrentDirectoryA(former));
}

TEST_F(Names, HaveAShortFormThatLeadsToTheSameFile) {
    char text[260] = "";
    const auto path = c("a LONG folder name\\inner FILE.text");
    const DWORD length = GetShortPathNameA(path.c_str(), text, sizeof text);
    ASSERT_GT(length, 0u);
    EXPECT_EQ(length, static_cast<DWORD>(lstrlenA(text)));
    EXPECT_EQ(std::string(text).find(' '), std::string::npos) << text;
    EXPECT_EQ(openCode(text), 0u) << text;
    EXPECT_EQ(GetShortPathNameA(path.c_str(), text, 5), length + 1) << "the room that it needs";
    EXPECT_EQ(GetShortPathNameA("C:\\", text, sizeof text), 3u);
    EXPECT_STREQ(text, "C:\\");
    EXPECT_EQ(codeOf([&] { return GetShortPathNameA(c("missing").c_str(), text, 260); }),
              DWORD{ERROR_FILE_NOT_FOUND});
    // Known difference: Wine does not tell the missing folder from the missing file.
    EXPECT_EQ(codeOf([&] { return GetShortPathNameA(c("missing\\x").c_str(), text, 260); }),
              onWine() ? DWORD{ERROR_FILE_NOT_FOUND} : DWORD{ERROR_PATH_NOT_FOUND});
}

}  // namespace
