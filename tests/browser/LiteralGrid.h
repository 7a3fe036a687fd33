// A slow grid for comparison: it keeps a colour per cell and follows the rules of the selection one statement
// at a time, the way a grid control with current cell and range would be driven. Tests run it beside
// GridSelection.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quavernet::test {

/// The control: a current cell (Row, Col), the other end of the range (RowSel, ColSel), a colour per cell.
struct LiteralControl {
    static constexpr int Cols = 6;
    static constexpr int FixedRows = 1;
    static constexpr int FixedCols = 0;

    int Rows = 1;
    int Row = 0, RowSel = 0, Col = 0, ColSel = 0;
    int TopRow = 1, VisibleRows = 1;
    int HighLight = 0;
    std::vector<std::vector<bool>> selectedColor; // [row][col]

    void SetRow(int value) { Row = RowSel = value; }
    void SetCol(int value) { Col = ColSel = value; }
    void SetRows(int value) {
        Rows = value;
        selectedColor.assign(static_cast<std::size_t>(value), std::vector<bool>(Cols, false));
    }
    bool CellIsSelectedColor() const {
        return selectedColor[static_cast<std::size_t>(Row)][static_cast<std::size_t>(Col)];
    }
    // FillStyle 1: a colour goes to every cell of the range. The header keeps its own look.
    void Paint(bool selected) {
        for (int row = 0; row < Rows; ++row) {
            const bool inRows = (row >= Row && row <= RowSel) || (row >= RowSel && row <= Row);
            for (int col = 0; col < Cols; ++col) {
                const bool inCols = (col >= Col && col <= ColSel) || (col >= ColSel && col <= Col);
                if (inRows && inCols && row >= FixedRows) {
                    selectedColor[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)] = selected;
                }
            }
        }
    }
    bool RowIsVisible(int row) const {
        return row < FixedRows || (row >= TopRow && row < TopRow + VisibleRows);
    }
};

/// A collection keyed by text that remembers the order of its members.
struct LiteralCollection {
    std::vector<std::pair<std::string, int>> items;

    void Add(int row) {
        const std::string key = std::to_string(row);
        for (const auto& item : items) {
            if (item.first == key) {
                return; // The failure of a duplicate key is ignored.
            }
        }
        items.emplace_back(key, row);
    }
    void Remove(const std::string& key) {
        for (auto item = items.begin(); item != items.end(); ++item) {
            if (item->first == key) {
                items.erase(item);
                return;
            }
        }
    }
    std::vector<std::int32_t> Rows() const {
        std::vector<std::int32_t> rows;
        for (const auto& item : items) {
            rows.push_back(item.second);
        }
        return rows;
    }
};

/// The list of the main window around the control.
struct LiteralGrid {
    LiteralControl grid;
    LiteralCollection SelectedRows;
    std::map<int, std::string> FilePaths;
    std::map<int, std::int64_t> RowData;
    std::string panelScanning;

    bool CtrlDown = false, ShiftDown = false, LeftDown = false, RightClicked = false;
    bool RowDeselected = false, GridDragging = false, multiple = false;
    int LastCol = 0, LastColSel = 0, LastRow = 0, LastRowSel = 0;
    int DetailsRow = 0, GridTopRow = 0;
    int kontextItems = 0, controlStateRow = 0;

    void Load(int count, const std::map<int, std::string>& paths, const std::map<int, std::int64_t>& ids) {
        SelectedRows = {};
        LastColSel = 0;
        LastRowSel = 0;
        grid.SetRows(count + 1);
        grid.SetRow(0);
        FilePaths = paths;
        RowData = ids;
    }

    void Press(int button, int shift, int mouseRow) {
        // The control moves before the press is announced; its own announcement of new bounds follows.
        if (button == 1 && mouseRow >= 1) {
            if (shift & 1) {
                grid.Row = grid.Row < 1 ? 1 : grid.Row; // A range begins at a data row.
                grid.RowSel = mouseRow;
            } else {
                grid.SetRow(mouseRow);
            }
            grid.ColSel = LiteralControl::Cols - 1;
        }
        kontextItems = 0;
        controlStateRow = grid.Row;
        if (grid.Row >= 1) {
            grid.Col = 5;
        }
        GridDragging = true;
        if (grid.Rows < 2) {
            return;
        }
        if (button != 2) {
            RightClicked = false;
            if (button == 1) {
                LeftDown = true;
                if (shift == 1) {
                    grid.HighLight = 1;
                    ShiftDown = true;
                }
                if (shift == 2) {
                    CtrlDown = true;
                }
            }
            bool announced = false;
            if ((grid.ColSel == LastColSel && grid.RowSel == LastRowSel) ||
                (LastColSel == 0 && LastRowSel == 0)) {
                SelChange();
                announced = true;
            }
            if (!announced && (grid.Row != LastRow || grid.RowSel != LastRowSel)) {
                SelChange();
            }
        }
        if (button == 2) {
            RightClicked = true;
            if (SelectedRows.items.size() <= 1) {
                grid.SetRow(mouseRow);
                grid.ColSel = LiteralControl::Cols - 1;
                SelChange();
                DetailsRow = grid.Row;
                kontextItems = 1;
            } else {
                kontextItems = 2;
            }
        }
    }

    void Release() {
        grid.HighLight = 0;
        GridDragging = false;
        CtrlDown = false;
        ShiftDown = false;
        LeftDown = false;
    }

    void Key(int target, bool shift) {
        if (grid.Rows < 2) {
            return;
        }
        if (target < 1) {
            target = 1;
        }
        if (target > grid.Rows - 1) {
            target = grid.Rows - 1;
        }
        const int oldRow = grid.Row;
        const int oldRowSel = grid.RowSel;
        if (shift && grid.Row >= 1) {
            grid.RowSel = target;
        } else {
            grid.SetRow(target);
        }
        if (grid.Row == oldRow && grid.RowSel == oldRowSel) {
            return;
        }
        grid.ColSel = LiteralControl::Cols - 1;
        SelChange();
    }

    void SelChange() {
        RowDeselected = false;
        if (grid.Rows >= 2) {
            if (LeftDown && !CtrlDown && !ShiftDown) {
                grid.SetCol(grid.ColSel);
                grid.SetRow(grid.RowSel);
            }
            const int Col = grid.Col, ColSel = grid.ColSel, Row = grid.Row, RowSel = grid.RowSel;
            if (!CtrlDown) {
                grid.SetCol(LiteralControl::FixedCols);
                grid.SetRow(LiteralControl::FixedRows);
                grid.ColSel = LiteralControl::Cols - 1;
                grid.RowSel = grid.Rows - 1;
                grid.Paint(false);
            }
            grid.SetCol(LiteralControl::FixedCols);
            grid.SetRow(Row);
            grid.ColSel = LiteralControl::Cols - 1;
            grid.RowSel = RowSel;
            if (grid.CellIsSelectedColor() && CtrlDown) {
                grid.Paint(false);
                SelectedRows.Remove(std::to_string(RowData[Row]));
                RowDeselected = true;
            } else {
                grid.Paint(true);
            }
            grid.Col = Col;
            grid.ColSel = ColSel;
            grid.Row = Row;
            grid.RowSel = RowSel;
            LastCol = Col;
            LastColSel = ColSel;
            LastRow = Row;
            LastRowSel = RowSel;
            if (!CtrlDown) {
                SelectedRows = {};
            }
            AddSelectedRows(Row, RowSel);
            if (FilePaths.count(grid.Row) != 0) {
                panelScanning = FilePaths[grid.Row];
            }
        }
        GridTopRow = grid.TopRow;
        if (!grid.RowIsVisible(grid.Row)) {
            if (grid.Row <= grid.TopRow) {
                grid.TopRow = GridTopRow - 1;
            } else {
                grid.TopRow = GridTopRow + 1;
            }
            if (grid.TopRow < 1) {
                grid.TopRow = 1;
            }
        }
    }

    void AddSelectedRows(int first, int last) {
        if (!CtrlDown) {
            SelectedRows = {};
            AddRange(first, last);
            multiple = false;
        }
        if (CtrlDown) {
            if (!RowDeselected) {
                AddRange(first, last);
            }
            multiple = true;
        }
    }

    void AddRange(int first, int last) {
        if (last <= first) {
            const int other = first;
            first = last;
            last = other;
        }
        for (int row = first; row <= last; ++row) {
            if (row >= LiteralControl::FixedRows) { // The header is no entry of the list.
                SelectedRows.Add(row);
            }
        }
    }
};

} // namespace quavernet::test
