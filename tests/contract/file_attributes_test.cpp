// Attributes by name.
#include "contract_files.h"

namespace {

class Attributes : public ContractFiles {
  protected:
    void SetUp() override {
        makeFolder("folder");
        write(c("file"), "content");
    }
    // Known difference: in Wine every file has the archive mark.
    static DWORD comparable(DWORD value) {
        constexpr DWORD usual = FILE_ATTRIBUTE_ARCHIVE | FILE_ATTRIBUTE_NORMAL;
        return onWine() ? value & ~usual : value;
    }
    DWORD set(const std::string& name, DWORD value) const {
        return codeOf([&] { return SetFileAttributesW(Wide(c(name)), value); });
    }
};

TEST_F(Attributes, OfAFileAreThoseThatWereSet) {
    EXPECT_EQ(attributes(c("file")), DWORD{FILE_ATTRIBUTE_ARCHIVE}) << "a new file";
    const DWORD values[] = {
        FILE_ATTRIBUTE_NORMAL, FILE_ATTRIBUTE_HIDDEN, FILE_ATTRIBUTE_READONLY,
        FILE_ATTRIBUTE_READONLY | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ARCHIVE,
        FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE};
    for (const DWORD value : values) {
        EXPECT_EQ(set("FILE", value), 0u);
        EXPECT_EQ(comparable(GetFileAttributesW(Wide(c("file")))), comparable(value));
        EXPECT_EQ(comparable(attributes(c("file"))), comparable(value));
    }
    EXPECT_TRUE(SetFileAttributesA(c("file").c_str(), 0)) << "0 takes all away";
    EXPECT_EQ(comparable(attributes(c("file"))), comparable(FILE_ATTRIBUTE_NORMAL));
}

TEST_F(Attributes, OfADirectoryKeepItsMark) {
    EXPECT_EQ(attributes(c("folder")), DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_EQ(attributes(c("folder\\")), DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_EQ(set("folder", FILE_ATTRIBUTE_HIDDEN), 0u);
    EXPECT_EQ(attributes(c("folder")), DWORD{FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_HIDDEN});
    EXPECT_EQ(set("folder", FILE_ATTRIBUTE_NORMAL), 0u);
    EXPECT_EQ(attributes(c("folder")), DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_TRUE(GetFileAttributesA("C:\\") & FILE_ATTRIBUTE_DIRECTORY);
}

TEST_F(Attributes, OfWhatIsNotThereTellWhatIsMissing) {
    const std::pair<const char*, DWORD> names[] = {{"missing", ERROR_FILE_NOT_FOUND},
                                                   {"missing\\file", ERROR_PATH_NOT_FOUND},
                                                   {"file\\file", ERROR_PATH_NOT_FOUND},
                                                   {"f?le", ERROR_INVALID_NAME}};
    for (const auto& [name, code] : names) {
        EXPECT_EQ(
            codeOf([&] { return GetFileAttributesW(Wide(c(name))) != INVALID_FILE_ATTRIBUTES; }),
            code)
            << name;
        EXPECT_EQ(set(name, FILE_ATTRIBUTE_HIDDEN), code) << name;
    }
}

}  // namespace
