// Moving, copying and deleting.
#include <cstring>

#include "contract_files.h"

namespace {

class WholeFiles : public ContractFiles {
  protected:
    WholeFiles() { write(c("taken"), "old"); }

    DWORD move(const std::string& from, const std::string& to) const {
        return codeOf(MoveFileW(Wide(c(from)), Wide(to[1] == ':' ? to : c(to))));
    }
    DWORD copy(const std::string& from, const std::string& to, BOOL failIfExists = FALSE) const {
        return codeOf(CopyFileW(Wide(c(from)), Wide(c(to)), failIfExists));
    }
    DWORD remove(const std::string& name) const { return codeOf(DeleteFileW(Wide(c(name)))); }
};

TEST_F(WholeFiles, MoveToANewNameOnly) {
    EXPECT_EQ(move("file", "Taken"), alreadyThere);
    EXPECT_EQ(move("missing", "to"), noFile);
    EXPECT_EQ(move("file", "missing\\to"), noPath);
    EXPECT_EQ(move("file", "a?b"), badName);
    EXPECT_EQ(move("file", "folder\\to"), 0u);
    EXPECT_FALSE(exists(c("file")));
    EXPECT_EQ(move("folder", "renamed"), 0u) << "a directory goes with what it holds";
    EXPECT_EQ(move("renamed\\to", d("to")), 0u) << "to another drive";
    EXPECT_EQ(move("taken", d("to")), alreadyThere);
    EXPECT_EQ(read(d("to")), "content");
    EXPECT_EQ(move("taken", "TAKEN"), 0u) << "a change of case only";
    // Known difference: Wine does nothing then.
    EXPECT_TRUE(onWine() || narrow(record(c("taken")).cFileName) == "TAKEN");
    EXPECT_EQ(read(c("taken")), "old");
}

TEST_F(WholeFiles, GoOrStayAsThoseShareWhoHaveThemOpen) {
    {
        const Opened reader(c("file"), reading, shareRead, OPEN_EXISTING);
        EXPECT_EQ(move("file", "to"), inUse);
        EXPECT_EQ(remove("file"), inUse);
        EXPECT_EQ(copy("taken", "file"), inUse);
        EXPECT_EQ(copy("file", "to"), 0u) << "a reader shares reading";
    }
    const Opened writer(c("to"), writing, shareNothing, OPEN_EXISTING);
    EXPECT_EQ(copy("to", "new"), inUse);
    const Opened sharer(c("file"), reading, shareAll, OPEN_EXISTING);
    EXPECT_EQ(move("file", "new"), 0u);
    EXPECT_EQ(remove("new"), 0u);
    EXPECT_EQ(GetFileSize(sharer.handle, nullptr), 7u) << "the handle still leads to the content";
}

TEST_F(WholeFiles, ReplaceOthersWhenCopiedWithAttributesAndTimes) {
    constexpr DWORD kept = readOnly | hidden | archive;
    setAttributes(c("file"), kept);
    Sleep(20);
    write(c("taken"), "something longer than the content");
    EXPECT_EQ(copy("file", "taken", TRUE), fileThere);
    EXPECT_EQ(copy("file", "TAKEN"), 0u);
    EXPECT_EQ(read(c("taken")), "content");
    EXPECT_EQ(copy("file", "to"), 0u);
    EXPECT_EQ(attributes(c("to")), kept);
    const auto source = record(c("file")), target = record(c("to"));
    EXPECT_EQ(std::memcmp(&source.ftLastWriteTime, &target.ftLastWriteTime, sizeof(FILETIME)), 0);
    EXPECT_EQ(copy("missing", "new"), noFile);
    EXPECT_EQ(copy("file", "missing\\to"), noPath);
    EXPECT_EQ(copy("folder", "new"), denied);
    EXPECT_EQ(copy("file", "folder"), denied);
    setAttributes(c("file"), normal);
    EXPECT_EQ(copy("file", "file"), inUse);
}

TEST_F(WholeFiles, AreDeletedOrReplacedUnlessReadOnlyOrDirectories) {
    setAttributes(c("taken"), readOnly);
    EXPECT_EQ(remove("taken"), denied);
    EXPECT_TRUE(onWine() || copy("file", "taken") == denied) << "known: " << wineLetsRootWrite;
    EXPECT_EQ(remove("FILE"), 0u);
    EXPECT_EQ(remove("file"), noFile);
    EXPECT_EQ(remove("folder"), denied);
    EXPECT_EQ(remove("t*"), badName);
}

}  // namespace
