#include "browser/GridSelection.h"

#include "app/MainModule.h"

#include <algorithm>
#include <utility>

namespace quavernet {

void GridSelection::Reset(std::int32_t rows) {
    m_rows = std::max(rows, 1);
    m_row = m_rowSel = 0;
    m_painted.Clear();
    m_last.colSel = m_last.rowSel = 0;
    mainModule.SelectedRows.Clear();
    m_view.RepaintRows();
}

void GridSelection::GotFocus() {
    m_last.colSel = m_last.rowSel = 0;
}

void GridSelection::MouseDown(std::int32_t mouseRow, GridButton button, GridModifiers modifiers) {
    mouseRow = std::clamp(mouseRow, 0, m_rows - 1);
    if (button == GridButton::Left) {
        MoveByPress(mouseRow, modifiers.Shift);
    }
    if (m_row >= 1) {
        m_col = FormatColumn; // The control state looks the format up there, and leaves the column so.
    }
    ForgetTreeDrag();
    m_view.SelectionChanged();
    m_drag.GridDragging = true;
    if (m_rows < 2) {
        return;
    }
    if (button == GridButton::Right) {
        PressRight(mouseRow);
        return;
    }
    NoteButtons(button, modifiers);
    // Bounds that moved are a change, and a press on the remembered bounds, or with none remembered, counts
    // as one too: so every press is a change, and exactly one. A second one would turn a row that Ctrl has
    // just taken in out again.
    SelChange();
}

void GridSelection::ForgetTreeDrag() {
    m_drag.DragFromTree = false;
    m_drag.DragText.clear();
    m_drag.DragPosition.clear();
    m_drag.DragCategory.clear();
}

void GridSelection::MoveByPress(std::int32_t row, bool extend) {
    if (row < 1) {
        return; // The header moves nothing.
    }
    m_rowSel = row;
    m_colSel = Columns - 1;
    // A range that begins at no row begins at the first one: row 0 as the current one would make the header
    // of whatever acts on it.
    m_row = extend ? std::max(m_row, 1) : row;
}

void GridSelection::NoteButtons(GridButton button, GridModifiers modifiers) {
    m_rightClicked = false;
    if (button != GridButton::Left) {
        return;
    }
    m_leftDown = true;
    if (modifiers.Shift && !modifiers.Ctrl && !modifiers.Alt) {
        m_highLight = true;
        m_shiftDown = true;
    }
    if (modifiers.Ctrl && !modifiers.Shift && !modifiers.Alt) {
        m_ctrlDown = true;
    }
}

void GridSelection::PressRight(std::int32_t row) {
    m_rightClicked = true;
    if (mainModule.SelectedRows.Count() > 1) {
        m_view.SetKontextItems(2); // The selection stays: the menu acts on all of it.
        return;
    }
    SetRow(row);
    SelChange();
    mainModule.DetailsRow = m_row;
    services.events->DoEvents();
    m_view.SetKontextItems(1);
}

GridHover GridSelection::MouseMove(std::int32_t mouseRow, bool leftButton) const {
    GridHover hover;
    IgnoreFailure([&] { hover.ToolTip = mainModule.FileNames.Item(mouseRow); });
    hover.StartDrag = leftButton && !m_ctrlDown;
    return hover;
}

void GridSelection::MouseUp() {
    ++m_releases;
    m_highLight = false;
    m_drag.GridDragging = false;
    m_ctrlDown = false;
    m_shiftDown = false;
    m_leftDown = false;
}

void GridSelection::Click() {
    if (m_rows >= 2) {
        mainModule.GridTopRow = m_view.TopRow();
    }
}

void GridSelection::MenuKey() {
    const bool rightClicked = m_rightClicked;
    MouseDown(m_row, GridButton::Right, {});
    MouseUp();
    m_rightClicked = rightClicked;
}

void GridSelection::MoveTo(std::int32_t row, bool extend) {
    if (m_rows < 2) {
        return;
    }
    const std::int32_t end = std::clamp(row, 1, m_rows - 1);
    const std::int32_t current = extend && m_row >= 1 ? m_row : end;
    if (m_row == current && m_rowSel == end) {
        return; // Nothing moved: the grid announces no change.
    }
    m_row = current;
    m_rowSel = end;
    m_colSel = Columns - 1;
    SelChange();
}

void GridSelection::KeyMove(GridKey key, bool shift, std::int32_t page) {
    switch (key) {
    case GridKey::Up:
        MoveTo(m_rowSel - 1, shift);
        break;
    case GridKey::Down:
        MoveTo(m_rowSel + 1, shift);
        break;
    case GridKey::PageUp:
        MoveTo(m_rowSel - std::max(page, 1), shift);
        break;
    case GridKey::PageDown:
        MoveTo(m_rowSel + std::max(page, 1), shift);
        break;
    case GridKey::Home:
        MoveTo(1, shift);
        break;
    case GridKey::End:
        MoveTo(m_rows - 1, shift);
        break;
    }
}

std::vector<std::string> GridSelection::StartDrag() {
    std::vector<std::string> files;
    if (m_row < 1) {
        return files;
    }
    if (mainModule.SelectedRows.Count() == 1) {
        IgnoreFailure([&] { SelChange(); });
    }
    const std::uint64_t releases = m_releases;
    services.events->DoEvents();
    if (m_releases != releases) {
        return files; // The press has ended in the events: by its release, or by a drag of its own.
    }
    for (const std::int32_t row : mainModule.SelectedRows.Rows()) {
        IgnoreFailure([&] { files.push_back(mainModule.FilePaths.Item(row)); });
    }
    // A drop on the tree in whose events the press came has taken the mark away.
    m_drag.GridDragging = true;
    return files;
}

void GridSelection::SetRow(std::int32_t row) {
    m_row = m_rowSel = std::clamp(row, 0, m_rows - 1);
    m_colSel = Columns - 1;
}

void GridSelection::SelChange() {
    m_rowDeselected = false;
    if (m_rows >= 2) {
        if (m_leftDown && !m_ctrlDown && !m_shiftDown) {
            m_col = m_colSel;
            m_row = m_rowSel;
        }
        PaintBounds();
        m_view.RepaintRows();
        m_last = {m_col, m_colSel, m_row, m_rowSel};
        AddSelectedRows(m_row, m_rowSel);
        IgnoreFailure([&] { m_view.SetScanningPanel(mainModule.FilePaths.Item(m_row)); });
    }
    FollowRow();
}

// With Ctrl a painted row goes out of the marks, and the entry that goes out of SelectedRows is the one whose
// row number equals the row's File_id. As a rule there is none: the row stays a member, and commands still
// act on it.
void GridSelection::PaintBounds() {
    if (!m_ctrlDown) {
        m_painted.Clear();
    }
    const std::int32_t first = std::max(std::min(m_row, m_rowSel), 1); // The header is never marked.
    const std::int32_t last = std::max(m_row, m_rowSel);
    if (m_ctrlDown && m_painted.Contains(m_row)) {
        m_painted.Remove(first, last);
        IgnoreFailure([&] {
            const std::int64_t fileId = m_view.RowData(m_row);
            if (std::in_range<std::int32_t>(fileId)) {
                mainModule.SelectedRows.Remove(static_cast<std::int32_t>(fileId));
            }
        });
        m_rowDeselected = true;
    } else {
        m_painted.Add(first, last);
    }
}

void GridSelection::AddSelectedRows(std::int32_t first, std::int32_t last) {
    if (!m_ctrlDown) {
        mainModule.SelectedRows.Clear();
    }
    if (!m_ctrlDown || !m_rowDeselected) {
        if (last <= first) {
            std::swap(first, last);
        }
        mainModule.SelectedRows.AddRange(std::max(first, 1), last); // The header is no entry of the list.
    }
    m_multipleSelection = m_ctrlDown;
}

// The list scrolls by one row at a change, towards the current row.
void GridSelection::FollowRow() {
    const std::int32_t topRow = m_view.TopRow();
    mainModule.GridTopRow = topRow;
    if (m_row < 1 || m_view.RowIsVisible(m_row)) {
        return;
    }
    m_view.SetTopRow(std::max(m_row <= topRow ? topRow - 1 : topRow + 1, 1));
}

std::vector<KontextItem> KontextItems(int mode) {
    if (mode != 1 && mode != 2) {
        return {};
    }
    return {{"mnuKontextDetails", mode == 1},
            {"mnuKontextAnsicht", true},
            {"mnuKontextFilename", true},
            {"mnuKontextRandom", true},
            {"mnuKontextPlay", true}};
}

} // namespace quavernet
