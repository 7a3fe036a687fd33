#include "app/ShowHelp.h"

#include "app/HelpPages.h"
#include "app/LoadResString.h"
#include "support/LogicTest.h"

#include <map>

namespace quavernet::test {

namespace {
using Shown = std::vector<std::pair<std::string, std::string>>;
class ShowHelpTest : public LogicTest {};

std::string PageOf(std::string_view form, std::string_view control = "") {
    const HelpPage* line = FindHelpPage(form, control);
    return line == nullptr ? "(no line)" : std::string(line->Page);
}
} // namespace

TEST_F(ShowHelpTest, GermanAndEnglishHaveAHelpFileEach) {
    mainModule.Language = "GER";
    ShowHelp("HTML\\start.html");
    mainModule.Language = "ENG";
    ShowHelp("HTML\\start.html");
    EXPECT_EQ(helpViewer.shown, (Shown{{"help.chm", "HTML\\start.html"}, {"helpE.chm", "HTML\\start.html"}}));
}

TEST_F(ShowHelpTest, AnyOtherLanguageLeavesTheFilesNameEmpty) {
    for (const char* language : {"FRA", "", "ger", "GER "}) {
        mainModule.Language = language;
        EXPECT_EQ(HelpFile(), "") << language;
    }
    ShowHelp("HTML\\tree.html");
    EXPECT_EQ(helpViewer.shown, (Shown{{"", "HTML\\tree.html"}}));
}

TEST_F(ShowHelpTest, TheLanguageIsThatOfTheLastLookup) {
    settings.values["Language"] = "ENG";
    mainModule.Language = "GER";
    EXPECT_EQ(HelpFile(), "help.chm");
    (void)LoadResString(101);
    EXPECT_EQ(HelpFile(), "helpE.chm");
}

TEST_F(ShowHelpTest, AnEmptyPageAsksForTheContents) {
    mainModule.Language = "GER";
    ShowHelp("");
    EXPECT_EQ(helpViewer.shown, (Shown{{"help.chm", ""}}));
}

TEST_F(ShowHelpTest, NoViewerIsNoFailure) {
    services.helpViewer = nullptr;
    mainModule.Language = "GER";
    EXPECT_NO_THROW(ShowHelp("HTML\\start.html"));
    EXPECT_TRUE(helpViewer.shown.empty());
}

TEST(HelpPagesTest, EveryFormHasItsPage) {
    const std::map<std::string, std::string> pages = {
        {"frmMain", "maindialoque"},
        {"frmAbout", "start"},
        {"frmCategoryName", "player"},
        {"frmChart", "toplists"},
        {"frmOptToplist", "toplists"},
        {"frmCovers", "coveradministration"},
        {"frmCoverSearchOptions", "coversearch"},
        {"frmDetails", "details"},
        {"frmEditTree", "edittree"},
        {"frmFileName", "editfilenames"},
        {"frmFilesName", "editfilenames"},
        {"frmKonvertOptions", "convertoptions"},
        {"frmPlayer", "player"},
        {"frmRandomPlay", "randomplayoptions"},
        {"frmRemind", "scanreminder"},
        {"frmScanLog", "scanreminder"},
        {"frmScanpath", "scanpath"},
    };
    std::size_t forms = 0;
    for (const HelpPage& line : HelpPages) {
        forms += line.Control.empty() ? 1 : 0;
    }
    EXPECT_EQ(forms, pages.size());
    for (const auto& [form, page] : pages) {
        EXPECT_EQ(PageOf(form), "HTML\\" + page + ".html") << form;
    }
}

TEST(HelpPagesTest, SomeControlsHaveAPageOfTheirOwn) {
    EXPECT_EQ(PageOf("frmMain", "grdMp3"), "HTML\\filewindow.html");
    EXPECT_EQ(PageOf("frmMain", "TreeView"), "HTML\\tree.html");
    EXPECT_EQ(PageOf("frmMain", "mnuHelp"), "HTML\\start.html");
    EXPECT_EQ(PageOf("frmMain", "txtSearch"), "(no line)");
}

TEST(HelpPagesTest, TheTwoOddWaysStay) {
    EXPECT_EQ(PageOf("frmCategoryName", "cmdFinish"), "HTML\\coveradministration.html");
    EXPECT_EQ(PageOf("frmScanLog"), "HTML\\scanreminder.html");
    EXPECT_EQ(PageOf("frmScanLog", "cmdClose"), "(no line)");
    EXPECT_EQ(PageOf("frmScanLog", "lstLog"), "HTML\\scanlog.html");
}

TEST(HelpPagesTest, OnlyTheFilterCombosWaitForTheKeyToComeUp) {
    std::vector<std::string> late;
    for (const HelpPage& line : HelpPages) {
        if (line.OnKeyUp) {
            late.emplace_back(line.Control);
            EXPECT_EQ(line.Page, PageOf("frmMain"));
        }
    }
    EXPECT_EQ(late, (std::vector<std::string>{"cboDrive", "cboGenre", "cboAlbum"}));
}

} // namespace quavernet::test
