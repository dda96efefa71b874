// Directory links, in both builds as far as their volumes have them.
#include <gtest/gtest.h>
#include <jw32/directory_links.h>

#include "support/scratch_drives.h"

namespace {

constexpr DWORD linkAttributes = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;

bool volumeHasLinks() {
    const wchar_t root[] = {'C', ':', '\\', 0};
    DWORD longest = 0, flags = 0;
    GetVolumeInformationW(root, nullptr, 0, nullptr, &longest, &flags, nullptr, 0);
    return (flags & FILE_SUPPORTS_REPARSE_POINTS) != 0;
}

int makeLink(const std::string& link, const std::string& target, bool dryRun = false) {
    return Jw32MakeDirectoryLink(link.c_str(), target.c_str(), dryRun ? 1 : 0);
}

class DirectoryLink : public ScratchDrives {
  protected:
    DirectoryLink() {
        Jw32DirectoryCreate(c("target").c_str());
        write(c("target\\file"), "content");
    }
    static bool isEmptyDirectory(const std::string& path) {
        return attributes(path) == FILE_ATTRIBUTE_DIRECTORY &&
               Jw32FileFind((path + "\\file").c_str()) == 0;
    }
};

TEST_F(DirectoryLink, NeedsALinkOnAnAbsolutePathAndATarget) {
    const auto link = c("link"), target = c("target");
    for (const int dryRun : {0, 1}) {
        EXPECT_EQ(Jw32MakeDirectoryLink(nullptr, target.c_str(), dryRun), 0);
        EXPECT_EQ(Jw32MakeDirectoryLink("", target.c_str(), dryRun), 0);
        EXPECT_EQ(Jw32MakeDirectoryLink(link.c_str(), nullptr, dryRun), 0);
        EXPECT_EQ(Jw32MakeDirectoryLink(link.c_str(), "", dryRun), 0);
        EXPECT_EQ(Jw32MakeDirectoryLink("link", target.c_str(), dryRun), 0);
        EXPECT_EQ(Jw32MakeDirectoryLink("folder\\link", target.c_str(), dryRun), 0);
        EXPECT_EQ(Jw32MakeDirectoryLink("Q:\\link", target.c_str(), dryRun), 0);
    }
    EXPECT_FALSE(exists(link));
}

// Known difference: the volumes of Wine have no reparse points.
TEST_F(DirectoryLink, IsMadeOnAVolumeThatHasLinksOnly) {
    const bool hasLinks = volumeHasLinks();
    EXPECT_EQ(makeLink(c("link"), c("target"), true), hasLinks ? 1 : 0);
    EXPECT_FALSE(exists(c("link")));
    EXPECT_EQ(makeLink(c("link"), c("target")), hasLinks ? 1 : 0);
    EXPECT_EQ(exists(c("link")), hasLinks);
}

class MadeDirectoryLink : public DirectoryLink {
  protected:
    void SetUp() override {
        if (!volumeHasLinks()) GTEST_SKIP() << "the volume has no links";
    }
};

TEST_F(MadeDirectoryLink, StandsForItsTarget) {
    ASSERT_EQ(makeLink(c("link"), c("target")), 1);
    EXPECT_EQ(attributes(c("link")), linkAttributes);
    EXPECT_EQ(read(c("link\\file")), "content");
    write(c("link\\new"), "new content");
    EXPECT_EQ(read(c("target\\new")), "new content");
    WIN32_FIND_DATAA record{};
    void* const search = Jw32DirectoryFind(c("link").c_str(), &record);
    ASSERT_NE(search, INVALID_HANDLE_VALUE);
    FindClose(search);
    EXPECT_EQ(record.dwFileAttributes, linkAttributes);
    EXPECT_STREQ(record.cFileName, "link");
}

TEST_F(MadeDirectoryLink, GoesWithoutItsTarget) {
    ASSERT_EQ(makeLink(c("link"), c("target")), 1);
    removeTree(c("link"));
    EXPECT_FALSE(exists(c("link")));
    EXPECT_TRUE(exists(c("target")));
}

TEST_F(MadeDirectoryLink, MayLeadToARootOrToNothing) {
    write(d("file"), "on D:");
    ASSERT_EQ(makeLink(c("root"), "D:\\"), 1);
    EXPECT_EQ(read(c("root") + d("file").substr(2)), "on D:");
    ASSERT_EQ(makeLink(c("dangling"), c("missing\\below")), 1);
    EXPECT_EQ(attributes(c("dangling")), linkAttributes);
    EXPECT_FALSE(exists(c("dangling\\file")));
    Jw32DirectoryCreate(c("missing\\below").c_str());
    write(c("missing\\below\\file"), "late");
    EXPECT_EQ(read(c("dangling\\file")), "late");
}

TEST_F(MadeDirectoryLink, TakesATargetWithItsLastBackslash) {
    ASSERT_EQ(makeLink(c("link"), c("target\\")), 1);
    EXPECT_EQ(read(c("link\\file")), "content");
}

TEST_F(MadeDirectoryLink, TakesThePlaceOfAnEmptyDirectoryOnly) {
    Jw32DirectoryCreate(c("empty").c_str());
    EXPECT_EQ(makeLink(c("empty"), c("target")), 1);
    EXPECT_EQ(read(c("empty\\file")), "content");
    Jw32DirectoryCreate(c("full\\sub").c_str());
    EXPECT_EQ(makeLink(c("full"), c("target")), 0);
    EXPECT_EQ(attributes(c("full")), DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_TRUE(exists(c("full\\sub")));
    EXPECT_EQ(makeLink(c("target\\file"), c("full")), 0);
    EXPECT_EQ(read(c("target\\file")), "content");
    EXPECT_EQ(makeLink(c("missing\\link"), c("target")), 0);
    EXPECT_FALSE(exists(c("missing")));
}

TEST_F(MadeDirectoryLink, IsLeftAloneByTheNext) {
    Jw32DirectoryCreate(c("other").c_str());
    ASSERT_EQ(makeLink(c("link"), c("target")), 1);
    EXPECT_EQ(makeLink(c("link"), c("other")), 0);
    EXPECT_EQ(makeLink(c("link"), c("other"), true), 0);
    EXPECT_EQ(read(c("link\\file")), "content");
}

TEST_F(MadeDirectoryLink, IsTriedOutWithoutATrace) {
    EXPECT_EQ(makeLink(c("link"), c("target"), true), 1);
    EXPECT_FALSE(exists(c("link")));
    Jw32DirectoryCreate(c("empty").c_str());
    EXPECT_EQ(makeLink(c("empty"), c("target"), true), 1);
    EXPECT_TRUE(isEmptyDirectory(c("empty")));
}

}  // namespace
