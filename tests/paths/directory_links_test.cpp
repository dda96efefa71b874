// Directory links, in both builds as far as their volumes have them.
#include <gtest/gtest.h>
#include <jw32/directory_links.h>

#include "contract/wine.h"
#include "support/scratch_drives.h"

namespace {

using DirectoryLink = ScratchDrives;

TEST_F(DirectoryLink, NeedsAnAbsolutePathAndATarget) {
    const auto link = c("link"), below = c("missing\\link");
    const char *const at = link.c_str(), *const deep = below.c_str();
    const std::pair<const char*, const char*> rows[] = {{nullptr, at}, {"", at},     {at, nullptr},
                                                        {at, ""},      {"link", at}, {"a\\b", at},
                                                        {"Q:\\a", at}, {deep, at}};
    for (const auto& [from, to] : rows) {
        EXPECT_EQ(Jw32MakeDirectoryLink(from, to, 0) + Jw32MakeDirectoryLink(from, to, 1), 0)
            << from << " to " << to;
    }
    EXPECT_FALSE(exists(link) || exists(c("missing")));
}

// Known difference: the volumes of Wine have no reparse points.
TEST_F(DirectoryLink, IsTriedOutAndMadeWhereTheVolumeHasLinks) {
    const int made = onWine() ? 0 : 1;
    const auto make = [this](const char* name, const std::string& target, int dryRun = 0) {
        return Jw32MakeDirectoryLink(c(name).c_str(), target.c_str(), dryRun);
    };
    Jw32DirectoryCreate(c("empty").c_str());
    EXPECT_EQ(make("empty", c(), 1) + make("link", c(), 7), 2 * made);
    EXPECT_EQ(attributes(c("empty")), DWORD{FILE_ATTRIBUTE_DIRECTORY}) << "after a dry run";
    EXPECT_FALSE(exists(c("link"))) << "after a dry run";
    EXPECT_EQ(make("empty", "D:\\") + make("link", c("target\\")), 2 * made);
    if (onWine()) GTEST_SKIP() << "the volume has no links";
    EXPECT_EQ(make("link", d()) + make("link", d(), 1), 0) << "it is a link already";
    EXPECT_NE(attributes(c("link")) & FILE_ATTRIBUTE_REPARSE_POINT, 0u);
    EXPECT_TRUE(exists(c("empty") + d().substr(2))) << "of a root";
    Jw32DirectoryCreate(c("target").c_str());
    write(c("link\\file"), "content");
    removeTree(c("link"));
    EXPECT_FALSE(exists(c("link")));
    EXPECT_EQ(read(c("target\\file")), "content") << "it goes without its target";
}

}  // namespace
