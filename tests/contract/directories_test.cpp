// Making and removing directories.
#include "contract_files.h"

namespace {

class Directories : public ContractFiles {
  protected:
    void SetUp() override {
        makeFolder("folder");
        write(c("file"), "content");
    }
    DWORD remove(const std::string& name) const {
        return codeOf([&] { return RemoveDirectoryW(Wide(c(name))); });
    }
};

TEST_F(Directories, AreMadeWhereNothingStands) {
    const std::pair<const char*, DWORD> names[] = {
        {"new", 0},
        {"NEW", ERROR_ALREADY_EXISTS},
        {"new\\", ERROR_ALREADY_EXISTS},
        {"with backslash\\", 0},
        {"file", ERROR_ALREADY_EXISTS},
        {"missing\\new", ERROR_PATH_NOT_FOUND},
        {"file\\new", ERROR_PATH_NOT_FOUND},
        {"a?b", ERROR_INVALID_NAME},
        {"a|b", ERROR_INVALID_NAME},
        {"folder\\..\\other", 0},
        {"folder/slash", 0},
        {"dots and blanks. ..", 0},
    };
    for (const auto& [name, code] : names) EXPECT_EQ(makeFolder(name), code) << name;
    for (const char* const name : {"with backslash", "other", "folder\\slash", "dots and blanks"}) {
        EXPECT_EQ(attributes(c(name)), DWORD{FILE_ATTRIBUTE_DIRECTORY}) << name;
    }
}

TEST_F(Directories, AreNotMadeOfRootsAndNothing) {
    const std::pair<const wchar_t*, DWORD> names[] = {{L"C:\\", ERROR_ALREADY_EXISTS},
                                                      {L"", ERROR_PATH_NOT_FOUND},
                                                      {nullptr, ERROR_PATH_NOT_FOUND}};
    for (const auto& [name, expected] : names) {
        EXPECT_EQ(codeOf([&, path = name] { return CreateDirectoryW(path, nullptr); }), expected)
            << (name == nullptr ? "null" : "name of length ") << lstrlenW(name);
    }
}

TEST_F(Directories, AreNotMadeOnMissingDrives) {
    if (onWine()) GTEST_SKIP() << "known difference: " << wineMissesDrives;
    EXPECT_EQ(codeOf([] { return CreateDirectoryW(L"Q:\\new", nullptr); }),
              DWORD{ERROR_PATH_NOT_FOUND});
}

TEST_F(Directories, AreRemovedWhenEmpty) {
    write(c("folder\\file"), "");
    EXPECT_EQ(remove("folder"), DWORD{ERROR_DIR_NOT_EMPTY});
    EXPECT_TRUE(DeleteFileW(Wide(c("folder\\file"))));
    EXPECT_EQ(remove("FOLDER\\"), 0u);
    EXPECT_EQ(remove("folder"), DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(remove("missing\\folder"), DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_EQ(remove("file"), DWORD{ERROR_DIRECTORY});
    EXPECT_EQ(remove("f*"), DWORD{ERROR_INVALID_NAME});
}

TEST_F(Directories, ThatAreReadOnlyAreNotRemoved) {
    if (onWine()) GTEST_SKIP() << "known difference: " << wineLetsRootWrite;
    ASSERT_TRUE(SetFileAttributesW(Wide(c("folder")), FILE_ATTRIBUTE_READONLY));
    EXPECT_EQ(remove("folder"), DWORD{ERROR_ACCESS_DENIED});
    ASSERT_TRUE(SetFileAttributesW(Wide(c("folder")), FILE_ATTRIBUTE_NORMAL));
    EXPECT_EQ(remove("folder"), 0u);
}

TEST_F(Directories, CanBeTheCurrentOne) {
    char former[260], text[260];
    ASSERT_GT(GetCurrentDirectoryA(sizeof former, former), 0u);
    ASSERT_TRUE(SetCurrentDirectoryA(c("FOLDER").c_str()));
    const DWORD length = GetCurrentDirectoryA(sizeof text, text);
    EXPECT_EQ(lstrlenA(text), static_cast<int>(length));
    EXPECT_EQ(GetCurrentDirectoryA(3, text), length + 1) << "the room that it needs";
    { const Opened file(L"here", GENERIC_WRITE, 0, CREATE_NEW); }
    EXPECT_TRUE(exists(c("folder\\here")));
    EXPECT_EQ(openCode("C:here"), 0u);
    EXPECT_EQ(openCode("..\\file"), 0u);
    EXPECT_EQ(openCode(c("file").substr(2)), 0u) << "rooted on the current drive";
    EXPECT_EQ(codeOf([&] { return SetCurrentDirectoryA(c("missing").c_str()); }),
              DWORD{ERROR_FILE_NOT_FOUND});
    EXPECT_EQ(codeOf([&] { return SetCurrentDirectoryA(c("file").c_str()); }),
              DWORD{ERROR_DIRECTORY});
    EXPECT_TRUE(SetCurrentDirectoryA(former));
}

}  // namespace
