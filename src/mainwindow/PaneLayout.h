// Where the controls of the main window stand: moves them by the layout rules, at the start, at a resize and
// under the splitter. MainPanes owns it together with the controls.
#pragma once

#include "mainwindow/MainLayout.h"

#include <cstdint>

class QEvent;
class QWidget;

namespace quavernet {

class FilterRow;
class LetterRow;
class MainStatusBar;

/// The controls that the layout rules place.
struct PlacedControls {
    QWidget& Client; ///< The form's scale area, below the strip with toolbar and filter row.
    QWidget& Toolbar;
    FilterRow& Filter;
    QWidget& Play;
    QWidget& Randomize;
    QWidget& Frame1;
    QWidget& Frame3;
    QWidget& Sizer;
    LetterRow& Letters;
    QWidget& Grid;
    QWidget& Tree;
    MainStatusBar& Status;
};

class PaneLayout {
public:
    static constexpr int StripHeight = 510; ///< Twips, of the strip with toolbar and filter row.

    explicit PaneLayout(const PlacedControls& controls);

    void Form_Resize();
    void PackForSmallScreen();
    /// Lays the panes out for the start, with the window at its size.
    void SetSplitterPos(std::int32_t twips);
    std::int32_t SplitterPos() const { return static_cast<std::int32_t>(m_layout.lblSizer.Left); }

    /// Takes the sizes of the filter row's controls from their texts and fonts.
    void SizeFilterRow();

    /// Twips, of the window: the filter row is whole up to its button.
    double LeastUsefulWidth() const;

    /// Mouse events of the splitter.
    void SplitterEvent(QEvent& event);

private:
    void FitFilterRow();
    void ReadLayout();
    void ApplyLayout();

    PlacedControls m_controls;
    MainLayout m_layout;
    int m_dragOrigin = 0;
};

} // namespace quavernet
