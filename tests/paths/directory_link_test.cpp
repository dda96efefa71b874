// Directory links, in both builds as far as their volumes have them.
#include <gtest/gtest.h>
#include <jw32/directory_links.h>

#include "contract/wine.h"
#include "support/scratch_drives.h"

namespace {

constexpr DWORD linkAttributes = FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT;

class DirectoryLink : public ScratchDrives {
  protected:
    DirectoryLink() {
        Jw32DirectoryCreate(c("target").c_str());
        write(c("target\\file"), "content");
    }
    int make(const std::string& link, const std::string& target, int dryRun = 0) const {
        return Jw32MakeDirectoryLink(c(link).c_str(), target.c_str(), dryRun);
    }
};

// Known difference: the volumes of Wine have no reparse points.
TEST_F(DirectoryLink, IsTriedOutAndMadeOnAVolumeThatHasLinks) {
    Jw32DirectoryCreate(c("empty").c_str());
    for (const char* const place : {"link", "empty"}) {
        EXPECT_EQ(make(place, c("target"), 7), onWine() ? 0 : 1) << place;
        EXPECT_EQ(exists(c(place)), place == std::string("empty")) << "after a dry run: " << place;
    }
    EXPECT_EQ(attributes(c("empty")), DWORD{FILE_ATTRIBUTE_DIRECTORY});
    EXPECT_EQ(make("link", c("target")), onWine() ? 0 : 1);
    EXPECT_EQ(exists(c("link")), !onWine());
}

TEST_F(DirectoryLink, NeedsALinkOnAnAbsolutePathAndATarget) {
    const auto link = c("link"), below = c("missing\\link"), target = c("target");
    const char *const at = link.c_str(), *const to = target.c_str();
    const char* const rows[][2] = {
        {nullptr, to}, {"", to},     {at, nullptr}, {at, ""},
        {"link", to},  {"a\\b", to}, {"Q:\\a", to}, {below.c_str(), to},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Jw32MakeDirectoryLink(row[0], row[1], 0), 0) << row[0] << " to " << row[1];
        EXPECT_EQ(Jw32MakeDirectoryLink(row[0], row[1], 1), 0) << row[0] << " to " << row[1];
    }
    EXPECT_FALSE(exists(link) || exists(c("missing")));
}

class MadeDirectoryLink : public DirectoryLink {
  protected:
    void SetUp() override {
        if (onWine()) GTEST_SKIP() << "the volume has no links";
    }
};

TEST_F(MadeDirectoryLink, StandsForItsTargetAndIsLeftAloneByTheNext) {
    ASSERT_EQ(make("link", c("target\\")), 1);
    EXPECT_EQ(make("link", d()), 0);
    EXPECT_EQ(make("link", d(), 1), 0);
    write(c("link\\new"), "new content");
    EXPECT_EQ(read(c("link\\file")), "content");
    EXPECT_EQ(read(c("target\\new")), "new content");
    WIN32_FIND_DATAA record{};
    FindClose(Jw32DirectoryFind(c("link").c_str(), &record));
    EXPECT_STREQ(record.cFileName, "link");
    EXPECT_EQ(record.dwFileAttributes, linkAttributes);
    EXPECT_EQ(attributes(c("link")), linkAttributes);
    removeTree(c("link"));
    EXPECT_FALSE(exists(c("link")));
    EXPECT_TRUE(exists(c("target\\new"))) << "it goes without its target";
}

TEST_F(MadeDirectoryLink, MayLeadToARootOrToNothing) {
    write(d("file"), "on D:");
    ASSERT_EQ(make("root", "D:\\"), 1);
    EXPECT_EQ(read(c("root") + d("file").substr(2)), "on D:");
    ASSERT_EQ(make("dangling", c("missing\\below")), 1);
    EXPECT_EQ(attributes(c("dangling")), linkAttributes);
    EXPECT_FALSE(exists(c("dangling\\file")));
    Jw32DirectoryCreate(c("missing\\below").c_str());
    write(c("missing\\below\\file"), "late");
    EXPECT_EQ(read(c("dangling\\file")), "late");
}

}  // namespace
