// The list's own selection: mouse and key facts in, painted rows and SelectedRows out. The grid calls it and
// paints the rows that it names; it needs no screen.
#pragma once

#include <cstdint>
#include <string>
#include <unordered_set>

namespace quavernet {

/// What the selection asks of the grid and of the main window.
class GridWindow {
public:
    virtual ~GridWindow() = default;
    virtual std::int64_t RowData(std::int32_t row) const = 0; ///< Files.File_id
    virtual std::int32_t TopRow() const = 0;
    virtual void SetTopRow(std::int32_t row) = 0;
    virtual bool RowIsVisible(std::int32_t row) const = 0;
    virtual void SetScanningPanel(const std::string& text) = 0;
    virtual void RepaintRows() = 0;
    virtual void SelectionChanged() = 0;        ///< Control state 3.
    virtual void SetKontextItems(int mode) = 0; ///< 1: one selected row, 2: several.
};

enum class GridButton { Left, Right, Other };

/// The modifier keys held at a press. Ctrl or Shift count only as the one modifier.
struct GridModifiers {
    bool Shift = false;
    bool Ctrl = false;
    bool Alt = false;
};

/// Rows count from 1; 0 is the header. Columns are always taken in full width.
class GridSelection {
public:
    explicit GridSelection(GridWindow& window) : m_window(window) {}

    /// A new list stands in the grid: nothing is painted or remembered. `rows` counts the header too.
    void Reset(std::int32_t rows);

    void MouseDown(std::int32_t mouseRow, GridButton button, GridModifiers modifiers);
    void MouseUp();

    /// The current row moves by a key; `extend` keeps the other end of the range (Shift).
    void MoveTo(std::int32_t row, bool extend);

    /// Applies the current range to the painted rows and to SelectedRows.
    void SelChange();
    void AddSelectedRows(std::int32_t first, std::int32_t last);

    std::int32_t Row() const { return m_row; }
    std::int32_t RowSel() const { return m_rowSel; }
    std::int32_t Rows() const { return m_rows; }
    bool IsPainted(std::int32_t row) const { return m_painted.contains(row); }
    bool RightClicked() const { return m_rightClicked; }
    bool CtrlDown() const { return m_ctrlDown; }
    bool HighLight() const { return m_highLight; } ///< The grid's own marking, on during a press with Shift.

private:
    void PaintRange(std::int32_t first, std::int32_t last, bool paint);
    void ScrollToRow();

    GridWindow& m_window;
    std::unordered_set<std::int32_t> m_painted;
    std::int32_t m_rows = 1;
    std::int32_t m_row = 0;
    std::int32_t m_rowSel = 0;
    bool m_ctrlDown = false;
    bool m_shiftDown = false;
    bool m_leftDown = false;
    bool m_rightClicked = false;
    bool m_rowDeselected = false;
    bool m_highLight = false;
};

} // namespace quavernet
