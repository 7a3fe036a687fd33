#include "platform/Paths.h"

#include <gtest/gtest.h>

namespace quavernet::test {

TEST(PathsTest, APathHasAFolderAndAName) {
    EXPECT_EQ(FileNameFromPath("/music/a.mp3"), "a.mp3");
    EXPECT_EQ(FolderFromPath("/music/a.mp3"), "/music");
    EXPECT_EQ(FileNameFromPath("/a.mp3"), "a.mp3");
    EXPECT_EQ(FolderFromPath("/a.mp3"), "/");
    EXPECT_EQ(FileNameFromPath("a.mp3"), "a.mp3");
    EXPECT_EQ(FolderFromPath("a.mp3"), "");
    EXPECT_EQ(FileNameFromPath("/music/"), "");
    EXPECT_EQ(FolderFromPath("/music/"), "/music");
    EXPECT_EQ(FileNameFromPath(""), "");
    EXPECT_EQ(FolderFromPath(""), "");
    EXPECT_EQ(FileNameFromPath("C:\\a.mp3"), "C:\\a.mp3") << "only \"/\" separates";
}

TEST(PathsTest, AFinalSlashIsThereOnce) {
    EXPECT_EQ(WithFinalSlash("/music"), "/music/");
    EXPECT_EQ(WithFinalSlash("/music/"), "/music/");
    EXPECT_EQ(WithFinalSlash("/"), "/");
    EXPECT_EQ(WithFinalSlash(""), "/");
}

} // namespace quavernet::test
