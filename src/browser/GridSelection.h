// The selection of the main list without its screen. The form tells what mouse, keyboard and scroll bar do;
// out come the painted rows, mainModule.SelectedRows, the states of the context menu and the rows to show.
#pragma once

#include "browser/RowRanges.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace quavernet {

enum class GridButton { Left = 1, Right = 2, Middle = 4 };

/// Shift keys held down at a press; combined by addition.
namespace GridModifier {
inline constexpr int None = 0;
inline constexpr int Shift = 1;
inline constexpr int Ctrl = 2;
inline constexpr int Alt = 4;
} // namespace GridModifier

enum class GridKey { Up, Down, PageUp, PageDown, Home, End };

/// Items of the grid's context menu that a right press enables or disables.
struct KontextItem {
    const char* Name;
    bool Enabled;
};

/// What a press asks of the form.
struct GridPress {
    std::int32_t ControlStateRow = 0; ///< Row with which SetControlState runs in mode 3.
    int KontextItems = 0; ///< 0: no menu; 1 or 2: SetKontextItems in this mode, then mnuKontext pops up.
};

/// What a mouse movement asks of the form.
struct GridHover {
    std::optional<std::string> ToolTip; ///< Nothing: the old one stays.
    bool StartDrag = false;
};

class GridSelection {
public:
    static constexpr std::int32_t Columns = 6;
    static constexpr std::int32_t FormatColumn = 5;

    /// `rowData` gives the File_id of a row; rows count from 1.
    explicit GridSelection(std::function<std::int64_t(std::int32_t)> rowData);

    /// The list loses its rows (at the beginning of a load) and gets new ones (at its end).
    void Clear();
    void ShowRows(std::int32_t count);
    /// The form scrolled or was resized: the first row in view, and how many rows stand in view as a whole.
    void SetView(std::int32_t topRow, std::int32_t visibleRows);

    void GotFocus();
    /// Row 0 is the header; a place below the last row counts as the last row.
    GridPress MouseDown(GridButton button, int modifiers, std::int32_t row);
    GridHover MouseMove(bool leftButton, std::int32_t row) const;
    void MouseUp();
    void Click() const;
    void KeyMove(GridKey key, bool shift);

    /// Paths of the selected rows for a drag to another program; none if there is no current row.
    std::vector<std::string> StartDrag();
    /// The drag has ended, and with it the press that began it.
    void CompleteDrag();
    /// A drop has ended: the memory of a possible drag goes.
    void ClearDragging() { m_dragging = false; }

    /// Makes a row the current one, and the only one between the bounds; a row behind the last is the last.
    /// The selection follows at the next SelChange.
    void SetRow(std::int32_t row);
    /// Paints the rows between the bounds and brings SelectedRows, the panel's text and the view up to date.
    void SelChange();

    std::int32_t Rows() const { return m_count + 1; } ///< With the header.
    std::int64_t RowData(std::int32_t row) const { return m_rowData(row); }
    std::int32_t Row() const { return m_row; } ///< 0 while no row is the current one.
    std::int32_t RowSel() const { return m_rowSel; }
    std::int32_t Col() const { return m_col; }
    std::int32_t ColSel() const { return m_colSel; }
    std::int32_t TopRow() const { return m_topRow; }
    bool IsPainted(std::int32_t row) const { return m_painted.Contains(row); }
    const RowRanges& Painted() const { return m_painted; }

    bool CtrlDown() const { return m_ctrlDown; }
    bool ShiftDown() const { return m_shiftDown; }
    bool LeftDown() const { return m_leftDown; }
    bool RightClicked() const { return m_rightClicked; }
    bool RowDeselected() const { return m_rowDeselected; }
    bool GridDragging() const { return m_dragging; }
    bool MultipleSelection() const { return m_multipleSelection; }
    bool HighLight() const {
        return m_highLight;
    } ///< The grid's own marks show, while Shift and mouse are down.

    std::int32_t LastCol() const { return m_last.col; }
    std::int32_t LastColSel() const { return m_last.colSel; }
    std::int32_t LastRow() const { return m_last.row; }
    std::int32_t LastRowSel() const { return m_last.rowSel; }

    /// The text that the panel "Scanning" is to show, once; nothing if it keeps its text.
    std::optional<std::string> TakePanelText();

private:
    struct Bounds {
        std::int32_t col = 0;
        std::int32_t colSel = 0;
        std::int32_t row = 0;
        std::int32_t rowSel = 0;
    };

    void MoveByPress(std::int32_t row, bool extend);
    void PressRight(std::int32_t row, GridPress& press);
    void PaintBounds();
    void AddSelectedRows(std::int32_t first, std::int32_t last);
    void FollowRow();
    bool RowIsVisible(std::int32_t row) const;
    void BringIntoView(std::int32_t row);

    std::function<std::int64_t(std::int32_t)> m_rowData;
    std::int32_t m_count = 0; ///< Data rows.
    std::int32_t m_col = 0;
    std::int32_t m_colSel = 0;
    std::int32_t m_row = 0;
    std::int32_t m_rowSel = 0;
    std::int32_t m_topRow = 1;
    std::int32_t m_visibleRows = 1;
    RowRanges m_painted;
    Bounds m_last;
    bool m_ctrlDown = false;
    bool m_shiftDown = false;
    bool m_leftDown = false;
    bool m_rightClicked = false;
    bool m_rowDeselected = false;
    bool m_dragging = false;
    bool m_multipleSelection = false;
    bool m_highLight = false;
    std::optional<std::string> m_panelText;
};

/// The context menu's items for one selected row (mode 1) or several (mode 2): details work on one row only.
std::vector<KontextItem> SetKontextItems(int mode);

} // namespace quavernet
