// Where the parts of the main window stand: the rules of a resize, of the splitter and of the small screen,
// on plain numbers. frmMain fills the struct from its controls, calls, and moves its controls by the result.
#pragma once

#include "browser/FilterEvents.h"
#include "widgets/ControlBox.h"

#include <array>
#include <cstdint>
#include <string>

namespace quavernet {

struct MainLayout {
    std::int64_t ScaleWidth = 0; ///< Inside of the form.
    std::int64_t ScaleHeight = 0;
    ControlBox Frame1; ///< List pane.
    ControlBox Frame2; ///< Letter row, in Frame1.
    ControlBox Frame3; ///< Tree pane.
    ControlBox lblSizer;
    ControlBox TreeView;
    ControlBox grdMp3;
    ControlBox cboDrive;
    ControlBox cboGenre;
    ControlBox cboAlbum;
    ControlBox chkInterpret;
    ControlBox chkTitle;
    ControlBox txtSearch;
    ControlBox cmdSearch;
    ControlBox cmdPlay;
    ControlBox cmdRandomize;
    ControlBox ProgressBar;
    std::array<ControlBox, LetterLabels::Count> Letters;

    bool operator==(const MainLayout&) const = default;
};

/// Outer facts of the window, in twips.
struct WindowExtent {
    std::int64_t Width = 0;
    std::int64_t Height = 0;
    bool Minimised = false;
};

/// Form_Resize. Does nothing for a window that is minimised, narrower than 5000 or lower than 3000; a size
/// that would be negative is not set, and the rules after it go on from the old one.
void ResizeMain(MainLayout& layout, const WindowExtent& window, const std::string& screenResolution);

/// The layout in which the window starts: the parts fill the form, whatever its size, and the stored splitter
/// position parts the panes. A window below the sizes of ResizeMain keeps it.
void StartLayout(MainLayout& layout, std::int64_t splitterPos, const std::string& screenResolution);

/// Widths of the filter lists and of the search box: full in a wide window, where the box grows with it; in a
/// narrow one they give way, down to those of a small screen, so that what is right of them stays in view.
/// `afterSearch` is the room needed from the left of cmdSearch on; the widths of the check boxes must be set.
void FitFilterRow(MainLayout& layout, std::int64_t windowWidth, std::int64_t afterSearch);

/// The width that the filter row needs up to the right of cmdSearch where its controls are at their smallest.
std::int64_t LeastFilterRow(const MainLayout& layout);

/// Mouse move on the splitter with the left button down; `distance` is X minus the drag's origin. Either pane
/// stops at a width of 499. A size that would be negative ends the handler at that point.
void DragSplitter(MainLayout& layout, std::int64_t distance);

/// The stored splitter position at the start, without a clamp; a width never becomes negative.
void ApplySplitterPos(MainLayout& layout, std::int64_t splitterPos);

/// The packed layout of a screen of 800x600.
void PackForSmallScreen(MainLayout& layout);

} // namespace quavernet
