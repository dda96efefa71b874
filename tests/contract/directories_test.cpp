// Making and removing directories, the current one, and attributes by name.
#include "contract_files.h"

namespace {

class Directories : public ContractFiles {
  protected:
    DWORD remove(const std::string& name) const { return codeOf(RemoveDirectoryW(Wide(c(name)))); }
};

TEST_F(Directories, AreMadeWhereNothingStands) {
    const std::pair<const char*, DWORD> rows[] = {{"new", 0},
                                                  {"backslash\\", 0},
                                                  {"NEW", alreadyThere},
                                                  {"file", alreadyThere},
                                                  {"missing\\new", noPath},
                                                  {"file\\new", noPath},
                                                  {"a?b", badName}};
    for (const auto& [name, code] : rows) EXPECT_EQ(makeFolder(c(name)), code) << name;
    EXPECT_EQ(makeFolder("C:\\"), alreadyThere);
    for (const char* const name : {"new", "backslash\\"}) EXPECT_EQ(attributes(c(name)), directory);
}

TEST_F(Directories, AreRemovedWhenEmptyAndNotReadOnly) {
    write(c("folder\\inner"), "");
    EXPECT_EQ(remove("folder"), DWORD{ERROR_DIR_NOT_EMPTY});
    EXPECT_TRUE(DeleteFileW(Wide(c("folder\\inner"))));
    setAttributes(c("folder"), readOnly);
    EXPECT_TRUE(onWine() || remove("folder") == denied) << "known: " << wineLetsRootWrite;
    setAttributes(c("folder"), normal);
    EXPECT_EQ(remove("FOLDER\\"), 0u);
    EXPECT_EQ(remove("folder"), noFile);
    EXPECT_EQ(remove("file"), DWORD{ERROR_DIRECTORY});
    EXPECT_EQ(remove("f*"), badName);
}

TEST_F(Directories, CanBeTheCurrentOne) {
    char former[MAX_PATH], text[MAX_PATH];
    ASSERT_GT(GetCurrentDirectoryA(sizeof former, former), 0u);
    EXPECT_EQ(codeOf(SetCurrentDirectoryA(c("file").c_str())), DWORD{ERROR_DIRECTORY});
    EXPECT_EQ(codeOf(SetCurrentDirectoryA(c("missing").c_str())), noFile);
    ASSERT_TRUE(SetCurrentDirectoryA(c("FOLDER").c_str()));
    const auto length = static_cast<DWORD>(c("folder").size());
    EXPECT_EQ(GetCurrentDirectoryA(sizeof text, text), length);
    EXPECT_EQ(GetCurrentDirectoryA(length, text), length + 1) << "the room that it needs";
    EXPECT_EQ(GetDriveTypeA(nullptr), UINT{DRIVE_FIXED}) << "though this is no root";
    write("here", "");
    EXPECT_TRUE(exists(c("folder\\here")));
    const std::pair<std::string, std::string> paths[] = {
        {"..", c()}, {"x\\..\\y\\", c("folder\\y\\")}, {"C:x", c("folder\\x")}, {"\\x", "C:\\x"}};
    for (const auto& [path, full] : paths) {
        EXPECT_EQ(GetFullPathNameA(path.c_str(), sizeof text, text, nullptr), full.size()) << path;
        EXPECT_STRCASEEQ(text, full.c_str());
    }
    EXPECT_EQ(GetFullPathNameA("\\x", 4, text, nullptr), 5u) << "the room that it needs";
    EXPECT_TRUE(SetCurrentDirectoryA(former));
}

class Attributes : public ContractFiles {
  protected:
    // Known difference: in Wine every file has the archive mark.
    static DWORD comparable(DWORD value) { return onWine() ? value & ~(archive | normal) : value; }
};

TEST_F(Attributes, AreThoseThatWereSet) {
    EXPECT_EQ(attributes(c("file")), archive) << "a new file";
    for (const DWORD value : {normal, hidden, readOnly | FILE_ATTRIBUTE_SYSTEM | archive}) {
        EXPECT_EQ(setAttributes(c("FILE"), value), 0u);
        EXPECT_EQ(comparable(GetFileAttributesW(Wide(c("file")))), comparable(value));
    }
    EXPECT_TRUE(SetFileAttributesA(c("file").c_str(), 0)) << "0 takes all away";
    EXPECT_EQ(comparable(attributes(c("file"))), comparable(normal));
    setAttributes(c("folder"), hidden);
    EXPECT_EQ(attributes(c("folder\\")), hidden | directory);
    EXPECT_TRUE(attributes("C:\\") & directory);
    const std::pair<const char*, DWORD> missing[] = {{"missing\\file", noPath}, {"f?le", badName}};
    for (const auto& [name, code] : missing) {
        EXPECT_EQ(codeOf(exists(c(name))), code) << name;
        EXPECT_EQ(setAttributes(c(name), hidden), code) << name;
    }
}

}  // namespace
