// Where the controls of the main window stand: moves them by the layout rules, at the start, at a resize and
// under the splitter. MainPanes owns it together with the controls.
#pragma once

#include "mainwindow/MainLayout.h"

#include <QRect>

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

    /// Of the window: the filter row is whole up to its button.
    int LeastUsefulPixels() const;

    /// Takes on the font of the window. How many times larger than 15 to a pixel the twips are in it: they
    /// grow with its font, but not on a small screen, whose layout is packed. Asked at the very end too, when
    /// there are no fonts any more.
    void TakeFont();
    double Scale() const { return m_scale; }
    int StripPixels() const;

    /// Mouse and key events of the splitter. True if a key was one of its own.
    bool SplitterEvent(QEvent& event);

private:
    void FitFilterRow();
    void ReadLayout();
    void ApplyLayout();
    void MoveSplitter(std::int32_t distance);
    int Pixels(std::int64_t twips) const;
    std::int32_t Twips(int pixels) const;
    QRect Place(const ControlBox& box) const;

    PlacedControls m_controls;
    MainLayout m_layout;
    double m_scale = 1;
    int m_dragOrigin = 0;
};

} // namespace quavernet
