// The selection of the main list without its screen. The form tells what mouse and keyboard do; out come the
// painted rows, mainModule.SelectedRows, the states of the context menu and the row to scroll to.
#pragma once

#include "app/DragState.h"
#include "browser/RowRanges.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace quavernet {

/// What the selection asks of the grid and of the main window.
class SelectionView {
public:
    virtual ~SelectionView() = default;

    virtual std::int64_t RowData(std::int32_t row) const = 0; ///< Files.File_id
    virtual std::int32_t TopRow() const = 0;
    virtual void SetTopRow(std::int32_t row) = 0;
    virtual bool RowIsVisible(std::int32_t row) const = 0; ///< As a whole; asked for data rows only.
    virtual void SetScanningPanel(const std::string& text) = 0;
    virtual void RepaintRows() = 0;
    virtual void SelectionChanged() = 0;        ///< The controls follow Row.
    virtual void SetKontextItems(int mode) = 0; ///< 1: one selected row, 2: several.
};

enum class GridButton { Left, Right, Other };

/// The modifier keys held at a press. Ctrl or Shift count only as the one modifier.
struct GridModifiers {
    bool Shift = false;
    bool Ctrl = false;
    bool Alt = false;
};

enum class GridKey { Up, Down, PageUp, PageDown, Home, End };

/// What a mouse movement asks of the form.
struct GridHover {
    std::optional<std::string> ToolTip; ///< Nothing: the old one stays.
    bool StartDrag = false;
};

/// Rows count from 1; 0 is the header. Columns are always taken in full width.
class GridSelection {
public:
    static constexpr std::int32_t Columns = 6;
    static constexpr std::int32_t FormatColumn = 5;

    /// A press notes in `drag` that a drag of the list may begin, and that none of the tree does.
    GridSelection(SelectionView& view, DragState& drag) : m_view(view), m_drag(drag) {}

    /// Called when a new list is in the grid: nothing is painted, selected or remembered. `rows` counts the
    /// header too.
    void Reset(std::int32_t rows);

    void GotFocus();
    /// A press; a place below the last row counts as the last row. The form then pops up mnuKontext if the
    /// press was the right one and there are rows. Lets events run after a right press that selects a row.
    void MouseDown(std::int32_t mouseRow, GridButton button, GridModifiers modifiers);
    GridHover MouseMove(std::int32_t mouseRow, bool leftButton) const;
    void MouseUp();
    void Click();
    /// Prepares the context menu of the current row as a right press on it does, but is no press: what the
    /// last press was stays known.
    void MenuKey();

    /// The moving end of the range goes to a row; without `extend` (Shift) the current row goes with it.
    void MoveTo(std::int32_t row, bool extend);
    /// The row to which a key moves; `page` is the number of rows in view.
    void KeyMove(GridKey key, bool shift, std::int32_t page);

    /// Paths of the selected rows for a drag that begins now; none if there is no current row, or if the
    /// button goes up meanwhile. Lets events run before the rows are looked at.
    std::vector<std::string> StartDrag();
    /// The drag has ended, and with it the press that began it: the drag swallows the release of the button.
    void CompleteDrag() { MouseUp(); }

    /// Makes a row the current one, and the only one between the bounds; a row after the last is the last.
    /// The selection follows at the next SelChange.
    void SetRow(std::int32_t row);
    /// Paints the rows between the bounds and brings SelectedRows, the panel's text and the view up to date.
    void SelChange();
    /// Adds a range to SelectedRows by the rules of the keys held down.
    void AddSelectedRows(std::int32_t first, std::int32_t last);

    std::int32_t Rows() const { return m_rows; } ///< With the header.
    std::int32_t Row() const { return m_row; }   ///< 0 while no row is the current one.
    std::int32_t RowSel() const { return m_rowSel; }
    std::int32_t Col() const { return m_col; }
    std::int32_t ColSel() const { return m_colSel; }
    std::int64_t RowData(std::int32_t row) const { return m_view.RowData(row); }
    std::int32_t TopRow() const { return m_view.TopRow(); }
    void SetTopRow(std::int32_t row) { m_view.SetTopRow(row); }
    bool IsPainted(std::int32_t row) const { return m_painted.Contains(row); }
    const RowRanges& Painted() const { return m_painted; }

    bool CtrlDown() const { return m_ctrlDown; }
    bool ShiftDown() const { return m_shiftDown; }
    bool LeftDown() const { return m_leftDown; }
    bool RightClicked() const { return m_rightClicked; }
    bool RowDeselected() const { return m_rowDeselected; }
    bool MultipleSelection() const { return m_multipleSelection; }
    bool HighLight() const { return m_highLight; } ///< The grid's own marking, on during a press with Shift.

    std::int32_t LastCol() const { return m_last.col; }
    std::int32_t LastColSel() const { return m_last.colSel; }
    std::int32_t LastRow() const { return m_last.row; }
    std::int32_t LastRowSel() const { return m_last.rowSel; }

private:
    struct Bounds {
        std::int32_t col = 0;
        std::int32_t colSel = 0;
        std::int32_t row = 0;
        std::int32_t rowSel = 0;
    };

    void ForgetTreeDrag();
    void MoveByPress(std::int32_t row, bool extend);
    void PressRight(std::int32_t row);
    void NoteButtons(GridButton button, GridModifiers modifiers);
    void PaintBounds();
    void FollowRow();

    SelectionView& m_view;
    DragState& m_drag;
    std::int32_t m_rows = 1;
    std::int32_t m_col = 0;
    std::int32_t m_colSel = 0;
    std::int32_t m_row = 0;
    std::int32_t m_rowSel = 0;
    RowRanges m_painted;
    Bounds m_last;
    bool m_ctrlDown = false;
    bool m_shiftDown = false;
    bool m_leftDown = false;
    std::uint64_t m_releases = 0; ///< How often the button has gone up.
    bool m_rightClicked = false;
    bool m_rowDeselected = false;
    bool m_multipleSelection = false;
    bool m_highLight = false;
};

/// An item of the grid's context menu and whether it is enabled.
struct KontextItem {
    const char* Name;
    bool Enabled;
};

/// What SetKontextItems does in mode 1 (one selected row) or 2 (several): details work on one row only.
std::vector<KontextItem> KontextItems(int mode);

} // namespace quavernet
