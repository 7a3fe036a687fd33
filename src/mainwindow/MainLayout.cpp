#include "mainwindow/MainLayout.h"

#include <algorithm>

namespace quavernet {

namespace {

constexpr std::int64_t LeastWindowWidth = 5000;
constexpr std::int64_t LeastWindowHeight = 3000;
constexpr std::int64_t LeastPaneWidth = 500; ///< A pane below this is set to one twip less.

constexpr std::int64_t SmallDriveWidth = 1250; ///< Of a screen of 800x600, like the next three.
constexpr std::int64_t SmallGenreWidth = 1250;
constexpr std::int64_t SmallAlbumWidth = 1450;
constexpr std::int64_t SmallSearchWidth = 1250;

constexpr std::int64_t SearchWidth = 1800;
constexpr std::int64_t MostSearchWidth = 6000; ///< A longer line is no easier to read.

// A control takes no negative size; the assignment then fails and the old size stays.
bool SetSize(std::int64_t& size, std::int64_t value) {
    if (value < 0) {
        return false;
    }
    size = value;
    return true;
}

std::int64_t RightOf(const ControlBox& box) {
    return box.Left + box.Width;
}

void PlaceFilterRow(MainLayout& layout) {
    layout.cboDrive.Left = 2880;
    layout.cboGenre.Left = RightOf(layout.cboDrive) + 100;
    layout.cboAlbum.Left = RightOf(layout.cboGenre) + 100;
    layout.chkInterpret.Left = RightOf(layout.cboAlbum) + 100;
    layout.chkTitle.Left = RightOf(layout.chkInterpret) + 50;
    layout.txtSearch.Left = RightOf(layout.chkTitle) + 100;
    layout.cmdSearch.Left = RightOf(layout.txtSearch) + 50;
    layout.cmdPlay.Left = layout.cmdSearch.Left + 650;
    layout.cmdRandomize.Left = layout.cmdPlay.Left + 300;
}

// Moves the border between the panes. False at the first size that would be negative; what was set before
// stays set.
bool MoveBorder(MainLayout& layout, std::int64_t distance) {
    if (!SetSize(layout.Frame3.Width, layout.Frame3.Width + distance)) {
        return false;
    }
    layout.Frame1.Left += distance;
    return SetSize(layout.Frame1.Width, layout.Frame1.Width - distance);
}

bool DragLeft(MainLayout& layout, std::int64_t distance) {
    if (layout.Frame3.Width >= LeastPaneWidth) {
        return MoveBorder(layout, distance);
    }
    layout.Frame3.Width = LeastPaneWidth - 1;
    layout.Frame1.Left = layout.Frame3.Width + 60;
    return SetSize(layout.Frame1.Width, layout.ScaleWidth - layout.Frame3.Width - 120);
}

bool DragRight(MainLayout& layout, std::int64_t distance) {
    if (layout.Frame1.Width >= LeastPaneWidth) {
        return MoveBorder(layout, distance);
    }
    layout.Frame1.Width = LeastPaneWidth - 1;
    layout.Frame1.Left = layout.ScaleWidth - layout.Frame1.Width;
    return SetSize(layout.Frame3.Width, layout.ScaleWidth - layout.Frame1.Width - 60);
}

void FillForm(MainLayout& layout, const std::string& screenResolution) {
    SetSize(layout.Frame1.Height, layout.ScaleHeight - 600);
    if (screenResolution == "800x600") {
        SetSize(layout.Frame1.Width, layout.ScaleWidth - 2900);
        SetSize(layout.Frame2.Width, layout.Frame1.Width - 150);
    } else {
        SetSize(layout.Frame1.Width, layout.ScaleWidth - layout.Frame3.Width - 100);
    }
    layout.Frame3.Height = layout.Frame1.Height;
    layout.lblSizer.Left = layout.Frame1.Left - 60;
    SetSize(layout.TreeView.Height, layout.Frame3.Height - 180);
    SetSize(layout.TreeView.Width, layout.Frame3.Width - 120);
    SetSize(layout.grdMp3.Height, layout.Frame1.Height - 600);
    SetSize(layout.grdMp3.Width, layout.Frame1.Width - 120);
    PlaceFilterRow(layout);
    layout.ProgressBar.Top = layout.ScaleHeight - 250;
    layout.ProgressBar.Left = layout.ScaleWidth - 1740;
}

} // namespace

void ResizeMain(MainLayout& layout, const WindowExtent& window, const std::string& screenResolution) {
    if (!window.Minimised && window.Width >= LeastWindowWidth && window.Height >= LeastWindowHeight) {
        FillForm(layout, screenResolution);
    }
}

void StartLayout(MainLayout& layout, std::int64_t splitterPos, const std::string& screenResolution) {
    FillForm(layout, screenResolution);
    ApplySplitterPos(layout, splitterPos);
    SetSize(layout.grdMp3.Width, layout.Frame1.Width - 120);
    SetSize(layout.TreeView.Width, layout.Frame3.Width - 120);
}

void FitFilterRow(MainLayout& layout, std::int64_t windowWidth, std::int64_t afterSearch) {
    struct Flexible {
        ControlBox& box;
        std::int64_t full;
        std::int64_t least;
    };
    const Flexible controls[] = {{layout.cboDrive, 1950, SmallDriveWidth},
                                 {layout.cboGenre, 1950, SmallGenreWidth},
                                 {layout.cboAlbum, 2100, SmallAlbumWidth},
                                 {layout.txtSearch, SearchWidth, SmallSearchWidth}};
    std::int64_t give = 0;
    for (const Flexible& control : controls) {
        control.box.Width = control.full;
        give += control.full - control.least;
    }
    PlaceFilterRow(layout);
    const std::int64_t spare = windowWidth - layout.cmdSearch.Left - afterSearch;
    const std::int64_t missing = std::clamp<std::int64_t>(-spare, 0, give);
    for (const Flexible& control : controls) {
        const std::int64_t own = control.full - control.least;
        control.box.Width -= (missing * own + give - 1) / give; // Rounded up: together they give enough.
    }
    layout.txtSearch.Width += std::clamp<std::int64_t>(spare, 0, MostSearchWidth - SearchWidth);
}

std::int64_t LeastFilterRow(const MainLayout& layout) {
    MainLayout least = layout;
    least.cboDrive.Width = SmallDriveWidth;
    least.cboGenre.Width = SmallGenreWidth;
    least.cboAlbum.Width = SmallAlbumWidth;
    least.txtSearch.Width = SmallSearchWidth;
    PlaceFilterRow(least);
    return RightOf(least.cmdSearch);
}

void DragSplitter(MainLayout& layout, std::int64_t distance) {
    const bool moved = distance == 0  ? true
                       : distance < 0 ? DragLeft(layout, distance)
                                      : DragRight(layout, distance);
    if (!moved || !SetSize(layout.grdMp3.Width, layout.Frame1.Width - 120) ||
        !SetSize(layout.TreeView.Width, layout.Frame3.Width - 120)) {
        return;
    }
    layout.lblSizer.Left = layout.Frame3.Width;
}

void ApplySplitterPos(MainLayout& layout, std::int64_t splitterPos) {
    layout.lblSizer.Left = splitterPos;
    layout.Frame3.Width = std::max<std::int64_t>(splitterPos, 0);
    layout.Frame1.Left = layout.Frame3.Width + 60;
    layout.Frame1.Width = std::max<std::int64_t>(layout.ScaleWidth - layout.Frame3.Width - 120, 0);
}

void PackForSmallScreen(MainLayout& layout) {
    layout.Frame1.Width = 8500;
    layout.grdMp3.Width = 8350;
    layout.cboDrive.Width = SmallDriveWidth;
    layout.cboGenre.Width = SmallGenreWidth;
    layout.cboAlbum.Width = SmallAlbumWidth;
    layout.txtSearch.Width = SmallSearchWidth;
    layout.Letters.front().Left = 50;
    for (std::size_t i = 1; i < LetterLabels::Count; ++i) {
        layout.Letters[i].Left = RightOf(layout.Letters[i - 1]) + 10;
    }
}

} // namespace quavernet
