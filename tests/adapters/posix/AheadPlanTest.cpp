// What a plan has read, in which order, without a thread: the tests are its readers.
#include "adapters/posix/AheadPlan.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace quavernet::test {
namespace {

using posix::AheadJob;
using posix::AheadPlan;
using posix::AheadResult;
using posix::FileSystemKind;
using ::testing::ElementsAre;

/// A walk over a disk whose folders hold no files.
class FolderPlanTest : public ::testing::Test {
protected:
    /// Its user goes to the folder, and meets the disk there.
    void WakeAt(const std::string& folder) {
        plan.AskFolder(folder, toClose);
        while (plan.IsAsleep()) {
            plan.NoteBlocks([&] { return ++blocks; }, true);
        }
    }
    /// Lists what the plan wants, until it wants no more.
    std::vector<std::string> ListAll() {
        std::vector<std::string> listed;
        while (const auto job = plan.NextJob()) {
            EXPECT_EQ(job->file, AheadJob::NoFile);
            listed.push_back(job->path);
            AheadResult result;
            result.kind = FileSystemKind::Disk;
            result.blocks = 1;
            result.subFolders = subFolders[job->path];
            plan.Finish(*job, std::move(result), toClose);
        }
        return listed;
    }

    std::map<std::string, std::vector<std::string>> subFolders{
        {"/m", {"/m/a", "/m/b", "/m/c"}}, {"/m/a", {"/m/a/x"}}, {"/m/b", {"/m/b/y", "/m/b/z"}}};
    std::uint64_t blocks = 0;
    posix::ToClose toClose;
    AheadPlan plan{{"/m", {}, {}}, true, {}};
};

TEST_F(FolderPlanTest, APlanThatWakesLeavesOutWhatItsUserHasLeftBehind) {
    WakeAt("/m/b/y");
    EXPECT_THAT(ListAll(), ElementsAre("/m", "/m/b", "/m/b/y", "/m/b/z", "/m/c"));
}

TEST_F(FolderPlanTest, APlanThatWakesInAFolderThatNoListingTellsOfLeavesOutNothing) {
    WakeAt("/m/gone/w");
    EXPECT_THAT(ListAll(), ElementsAre("/m", "/m/a", "/m/a/x", "/m/b", "/m/b/y", "/m/b/z", "/m/c"));
}

TEST_F(FolderPlanTest, APlanThatWakesInAFolderThatVanishedGoesOnBesideIt) {
    WakeAt("/m/b/gone");
    EXPECT_THAT(ListAll(), ElementsAre("/m", "/m/b", "/m/b/y", "/m/b/z", "/m/c"));
    EXPECT_TRUE(plan.AskFolder("/m/c", toClose)) << "what its user comes to next is there";
}

/// A walk over a share whose folders, of which no listing tells, hold two files.
class SharePlanTest : public ::testing::Test {
protected:
    /// Lists a folder and opens its file, as its user; all that the plan wants is read.
    std::size_t Visit(const std::string& folder) {
        plan.AskFolder(folder, toClose);
        const std::size_t read = ReadAll();
        EXPECT_TRUE(plan.AskFolder(folder, toClose));
        EXPECT_TRUE(plan.AskFile(folder + "/song.mp3", Ahead::Contents, toClose));
        return read;
    }
    /// How many files there were.
    std::size_t ReadAll() {
        std::size_t files = 0;
        while (const auto job = plan.NextJob()) {
            AheadResult result;
            if (job->file == AheadJob::NoFile) {
                result.files.emplace_back("song.mp3", Ahead::Contents);
                result.files.emplace_back("never asked for.mp3", Ahead::Contents);
            } else {
                result.file = std::make_shared<posix::FileAhead>(job->path);
                ++files;
            }
            plan.Finish(*job, std::move(result), toClose);
        }
        return files;
    }

    posix::ToClose toClose;
    AheadPlan plan{{"/links", {}, {}}, false, {.files = 4, .folders = 4}};
};

TEST_F(SharePlanTest, FoldersThatLinksLeadToAreOverWhenTheNextOneIsAskedFor) {
    Visit("/links");
    for (int i = 0; i < 10; ++i) {
        EXPECT_EQ(Visit("/links/" + std::to_string(i)), 2U) << i;
    }
}

TEST_F(SharePlanTest, WhoGoesOnFromAFolderThatHangsFindsAReaderForTheFile) {
    plan.AskFolder("/links", toClose);
    const auto hanging = plan.NextJob();
    ASSERT_TRUE(hanging.has_value());
    EXPECT_FALSE(plan.NeedsReader()) << "one is at the folder";
    EXPECT_FALSE(plan.AskFile("/links/song.mp3", Ahead::Contents, toClose));
    EXPECT_TRUE(plan.NeedsReader());
}

} // namespace
} // namespace quavernet::test
