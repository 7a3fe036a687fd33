// Which help page belongs to which form and control. HelpKey looks the page up when F1 is pressed.
#pragma once

#include <array>
#include <string_view>

namespace quavernet {

struct HelpPage {
    std::string_view Form;
    std::string_view Control; ///< Empty: the form and all its controls that have no line of their own.
    std::string_view Page;
    bool OnKeyUp = false; ///< The page opens when F1 is released, not when it goes down.
};

/// cmdFinish of frmCategoryName leads to the covers, and the form and the button of frmScanLog to the
/// reminder: users know these ways, so they stay.
inline constexpr auto HelpPages = std::to_array<HelpPage>({
    {"frmMain", "", "HTML\\maindialoque.html"},
    {"frmMain", "cboDrive", "HTML\\maindialoque.html", true},
    {"frmMain", "cboGenre", "HTML\\maindialoque.html", true},
    {"frmMain", "cboAlbum", "HTML\\maindialoque.html", true},
    {"frmMain", "grdMp3", "HTML\\filewindow.html"},
    {"frmMain", "TreeView", "HTML\\tree.html"},
    {"frmMain", "mnuHelp", "HTML\\start.html"},
    {"frmAbout", "", "HTML\\start.html"},
    {"frmCategoryName", "", "HTML\\player.html"},
    {"frmCategoryName", "cmdFinish", "HTML\\coveradministration.html"},
    {"frmChart", "", "HTML\\toplists.html"},
    {"frmOptToplist", "", "HTML\\toplists.html"},
    {"frmCovers", "", "HTML\\coveradministration.html"},
    {"frmCoverSearchOptions", "", "HTML\\coversearch.html"},
    {"frmDetails", "", "HTML\\details.html"},
    {"frmEditTree", "", "HTML\\edittree.html"},
    {"frmFileName", "", "HTML\\editfilenames.html"},
    {"frmFilesName", "", "HTML\\editfilenames.html"},
    {"frmKonvertOptions", "", "HTML\\convertoptions.html"},
    {"frmPlayer", "", "HTML\\player.html"},
    {"frmRandomPlay", "", "HTML\\randomplayoptions.html"},
    {"frmRemind", "", "HTML\\scanreminder.html"},
    {"frmScanLog", "", "HTML\\scanreminder.html"},
    {"frmScanLog", "lstLog", "HTML\\scanlog.html"},
    {"frmScanpath", "", "HTML\\scanpath.html"},
});

/// The line of a control, or nothing if it has none of its own.
constexpr const HelpPage* FindHelpPage(std::string_view form, std::string_view control) {
    for (const HelpPage& line : HelpPages) {
        if (line.Form == form && line.Control == control) {
            return &line;
        }
    }
    return nullptr;
}

} // namespace quavernet
