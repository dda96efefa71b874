// Which names lead to a file, and the full and short forms of paths.
#include <cstring>

#include "contract_files.h"

namespace {

class Names : public ContractFiles {
  protected:
    Names() {
        makeFolder(c("A long folder name"));
        write(c("A long folder name\\inner file.text"), "content");
    }
};

TEST_F(Names, LeadToTheFileInEveryForm) {
    for (const char* const name :
         {"FILE", "file. .", "./file", "missing\\..\\file", "A LONG folder name/../file",
          "A long folder name.\\inner file.text", "A long folder name\\\\inner file.text"}) {
        EXPECT_EQ(openCode(c(name)), 0u) << name;
    }
    EXPECT_EQ(openCode("\\\\.\\" + c("file")), 0u);
    EXPECT_EQ(openCode("\\\\?\\" + c("file.")), noFile) << "behind the prefix a dot is a dot";
    EXPECT_EQ(openCode(c("..\\..\\..\\") + c("file").substr(3)), 0u) << ".. ends at the root";
}

TEST_F(Names, OfDevicesStandInEveryFolder) {
    const PathCode rows[] = {{"nul", 0},        {c("NUL.txt"), 0},       {c("nul:"), 0},
                             {"\\\\.\\NUL", 0}, {c("lpt9.txt"), noFile}, {"COM9", noFile}};
    for (const auto& [name, code] : rows) EXPECT_EQ(openCode(name), code) << name;
    if (onWine()) GTEST_SKIP() << "known difference: Wine misses files, not drives and servers";
    EXPECT_EQ(openCode("Q:\\file"), noPath);
    EXPECT_EQ(openCode("\\\\server\\share\\file"), DWORD{ERROR_BAD_NETPATH});
}

TEST_F(Names, MayHave255CharactersInAPartAnd259InAPath) {
    const auto longest = "\\\\?\\" + c(std::string(255, 'x'));
    { const Opened file(longest, writing, 0, CREATE_NEW); }
    EXPECT_EQ(openCode(longest), 0u);
    EXPECT_TRUE(DeleteFileW(Wide(longest)));
    if (onWine()) GTEST_SKIP() << "known difference: Wine knows no limit";
    EXPECT_EQ(openCode(longest + "x"), badName);
    auto path = c("A long folder name\\");
    path.append(259 - path.size(), 'x');
    EXPECT_EQ(openCode(path), noFile);
    EXPECT_EQ(openCode(path + "x"), noPath);
    EXPECT_EQ(openCode("\\\\?\\" + path + "x"), noFile);
}

TEST_F(Names, HaveAShortFormThatLeadsToTheSameFile) {
    char text[MAX_PATH] = "", cut[5] = "";
    const auto path = c("a LONG folder name\\inner FILE.text");
    const DWORD length = GetShortPathNameA(path.c_str(), text, sizeof text);
    EXPECT_EQ(std::strlen(text), length);
    EXPECT_EQ(openCode(text), 0u) << text;
    EXPECT_EQ(GetShortPathNameA(path.c_str(), cut, 5), length + 1) << "the room that it needs";
    EXPECT_EQ(codeOf(GetShortPathNameA(c("missing").c_str(), text, MAX_PATH)), noFile);
}

}  // namespace
