#include "app/MainModule.h"

#include "support/LogicTest.h"
#include "support/NoTags.h"
#include "support/Texts.h"

namespace quavernet::test {

namespace {

/// Both note when they are released.
class MortalConnection : public ADODB::Connection {
public:
    explicit MortalConnection(Texts& log) : m_log(log) {}
    ~MortalConnection() override {
        m_log.push_back("connection with " + std::to_string(mainModule.FilePaths.Count()) + " paths");
    }
    void Open(std::string_view) override {}
    void Execute(std::string_view) override {}
    ADODB::RowBlock Query(std::string_view) override { return ADODB::RowBlock(); }
    ADODB::RowBlock QueryFirst(std::string_view, std::size_t) override { return ADODB::RowBlock(); }
    void Commit() override {}
    std::int64_t ChangesOfOthers() override { return 0; }

private:
    Texts& m_log;
};

class MortalTags : public NoTags {
public:
    explicit MortalTags(Texts& log) : m_log(log) {}
    ~MortalTags() override {
        m_log.push_back("tags with " + std::to_string(mainModule.TreeNodeData.Keys().size()) + " nodes");
    }

private:
    Texts& m_log;
};

} // namespace

using MainModuleTest = LogicTest;

TEST_F(MainModuleTest, StartsWithAllLettersAndTheListSortedByPerformer) {
    EXPECT_EQ(mainModule.LetterFilter, "All");
    EXPECT_EQ(mainModule.SortDirection, "ASC");
    EXPECT_TRUE(mainModule.SortInterpret);
    EXPECT_FALSE(mainModule.SortTitle || mainModule.SortLength || mainModule.SortQuality ||
                 mainModule.SortFormat || mainModule.SortSize);
}

TEST_F(MainModuleTest, ASpecialFolderIsCutAtItsFirstNul) {
    shell.documents = std::string("/home/anna/Dokumente\0rest", 25);
    EXPECT_EQ(GetSpecialFolderPath(Shell::DocumentsFolder), "/home/anna/Dokumente");
}

TEST_F(MainModuleTest, AnUnknownSpecialFolderIsSaidToBeUndefined) {
    EXPECT_EQ(GetSpecialFolderPath(Shell::DocumentsFolder), " - nicht definiert - ");
    settings.values["Language"] = "ENG";
    EXPECT_EQ(GetSpecialFolderPath(Shell::DocumentsFolder), " - not defined - ");
}

TEST_F(MainModuleTest, TheEndReleasesEverythingAndReportsNoFailure) {
    mainModule.FilePaths.Add("/a.mp3");
    mainModule.FileNames.Add("a.mp3");
    mainModule.SelectedRows.Add(1);
    mainModule.TreeNodeData.Add("Parent");
    int exitCode = -1;
    try {
        ExitProgram();
    } catch (const ProcessEnded& end) {
        exitCode = end.exitCode;
    }
    EXPECT_EQ(exitCode, 0);
    EXPECT_EQ(mainModule.Connection, nullptr);
    EXPECT_EQ(mainModule.FilePaths.Count(), 0u);
    EXPECT_EQ(mainModule.FileNames.Count(), 0u);
    EXPECT_EQ(mainModule.SelectedRows.Count(), 0u);
    EXPECT_TRUE(mainModule.TreeNodeData.Keys().empty());
    EXPECT_EQ(mainModule.TagComponent, nullptr);
}

TEST_F(MainModuleTest, TheLibraryIsReleasedFirstAndTheTagComponentLast) {
    Texts log;
    mainModule.Connection = std::make_unique<MortalConnection>(log);
    mainModule.TagComponent = std::make_unique<MortalTags>(log);
    mainModule.FilePaths.Add("/a.mp3");
    mainModule.TreeNodeData.Add("Parent");
    EXPECT_THROW(ExitProgram(), ProcessEnded);
    EXPECT_EQ(log, (Texts{"connection with 1 paths", "tags with 0 nodes"}));
}

TEST_F(MainModuleTest, TheBrowserVersionIsPassedOn) {
    std::int32_t major = -1;
    std::int32_t minor = -1;
    std::int32_t build = -1;
    shell.browserVersion = std::tuple{5, 50, 4134};
    EXPECT_TRUE(GetIEVersion(major, minor, build));
    EXPECT_EQ((std::tuple{major, minor, build}), (std::tuple{5, 50, 4134}));
    shell.browserVersion.reset();
    EXPECT_FALSE(GetIEVersion(major, minor, build));
}

} // namespace quavernet::test
