#include "browser/GridSelection.h"

#include "app/MainModule.h"

#include <algorithm>
#include <utility>

namespace quavernet {

GridSelection::GridSelection(std::function<std::int64_t(std::int32_t)> rowData)
    : m_rowData(std::move(rowData)) {}

void GridSelection::Clear() {
    m_count = 0;
    m_row = m_rowSel = 0;
    m_topRow = 1;
    m_painted.Clear();
    m_last.colSel = m_last.rowSel = 0;
    mainModule.SelectedRows.Clear();
}

void GridSelection::ShowRows(std::int32_t count) {
    Clear();
    m_count = std::max(count, 0);
}

void GridSelection::SetView(std::int32_t topRow, std::int32_t visibleRows) {
    m_topRow = std::max(topRow, 1);
    m_visibleRows = std::max(visibleRows, 0);
}

void GridSelection::GotFocus() {
    m_last.colSel = m_last.rowSel = 0;
}

GridPress GridSelection::MouseDown(GridButton button, int modifiers, std::int32_t row) {
    row = std::clamp(row, 0, m_count);
    if (button == GridButton::Left) {
        MoveByPress(row, (modifiers & GridModifier::Shift) != 0);
    }
    GridPress press;
    press.ControlStateRow = m_row;
    if (m_row >= 1) {
        m_col = FormatColumn; // The control state looks the format up there, and leaves the column so.
    }
    m_dragging = true;
    if (Rows() < 2) {
        return press;
    }
    if (button == GridButton::Right) {
        PressRight(row, press);
        return press;
    }

    m_rightClicked = false;
    if (button == GridButton::Left) {
        m_leftDown = true;
        if (modifiers == GridModifier::Shift) {
            m_highLight = true;
            m_shiftDown = true;
        }
        if (modifiers == GridModifier::Ctrl) {
            m_ctrlDown = true;
        }
    }
    // Bounds that moved announce themselves. A press on the selected row moves nothing and counts all the
    // same; with no bounds remembered every press counts. One press is one change: a second one would turn a
    // row that Ctrl has just taken in out again.
    const bool onSelected = m_colSel == m_last.colSel && m_rowSel == m_last.rowSel;
    const bool nothingRemembered = m_last.colSel == 0 && m_last.rowSel == 0;
    const bool moved = m_row != m_last.row || m_rowSel != m_last.rowSel;
    if (onSelected || nothingRemembered || moved) {
        SelChange();
    }
    return press;
}

void GridSelection::MoveByPress(std::int32_t row, bool extend) {
    if (row < 1) {
        return; // The header moves nothing.
    }
    m_rowSel = row;
    m_colSel = Columns - 1;
    if (!extend) {
        m_row = row;
    }
}

void GridSelection::PressRight(std::int32_t row, GridPress& press) {
    m_rightClicked = true;
    if (mainModule.SelectedRows.Count() > 1) {
        press.KontextItems = 2; // The selection stays: the menu acts on all of it.
        return;
    }
    SetRow(row);
    SelChange();
    mainModule.DetailsRow = m_row;
    services.events->DoEvents();
    press.KontextItems = 1;
}

GridHover GridSelection::MouseMove(bool leftButton, std::int32_t row) const {
    GridHover hover;
    Skip([&] { hover.ToolTip = mainModule.FileNames.Item(row); });
    hover.StartDrag = leftButton && !m_ctrlDown;
    return hover;
}

void GridSelection::MouseUp() {
    m_highLight = false;
    m_dragging = false;
    m_ctrlDown = false;
    m_shiftDown = false;
    m_leftDown = false;
}

void GridSelection::Click() const {
    if (Rows() >= 2) {
        mainModule.GridTopRow = m_topRow;
    }
}

void GridSelection::KeyMove(GridKey key, bool shift) {
    if (Rows() < 2) {
        return;
    }
    const std::int32_t page = std::max(m_visibleRows, 1);
    std::int32_t target = m_rowSel;
    switch (key) {
    case GridKey::Up:
        target -= 1;
        break;
    case GridKey::Down:
        target += 1;
        break;
    case GridKey::PageUp:
        target -= page;
        break;
    case GridKey::PageDown:
        target += page;
        break;
    case GridKey::Home:
        target = 1;
        break;
    case GridKey::End:
        target = m_count;
        break;
    }
    target = std::clamp(target, 1, m_count);
    const std::int32_t anchor = shift && m_row >= 1 ? m_row : target;
    if (m_row == anchor && m_rowSel == target) {
        return; // Nothing moved: the grid announces no change.
    }
    m_row = anchor;
    m_rowSel = target;
    m_colSel = Columns - 1;
    SelChange();
    // One step along the rows scrolls by one row, as every change does. A leap, or the moving end of a range,
    // is brought into view by the grid itself.
    if (shift || (key != GridKey::Up && key != GridKey::Down)) {
        BringIntoView(m_rowSel);
    }
}

std::vector<std::string> GridSelection::StartDrag() {
    std::vector<std::string> files;
    if (m_row < 1) {
        return files;
    }
    if (mainModule.SelectedRows.Count() == 1) {
        Skip([&] { SelChange(); });
    }
    services.events->DoEvents();
    for (const std::int32_t row : mainModule.SelectedRows.Rows()) {
        Skip([&] { files.push_back(mainModule.FilePaths.Item(row)); });
    }
    return files;
}

void GridSelection::CompleteDrag() {
    MouseUp(); // The drag swallowed the release of the button.
}

void GridSelection::SetRow(std::int32_t row) {
    m_row = m_rowSel = std::clamp(row, 0, m_count);
    m_colSel = Columns - 1;
}

void GridSelection::SelChange() {
    m_rowDeselected = false;
    if (Rows() >= 2) {
        if (m_leftDown && !m_ctrlDown && !m_shiftDown) {
            m_col = m_colSel;
            m_row = m_rowSel;
        }
        PaintBounds();
        m_last = {m_col, m_colSel, m_row, m_rowSel};
        if (!m_ctrlDown) {
            mainModule.SelectedRows.Clear();
        }
        AddSelectedRows(m_row, m_rowSel);
        Skip([&] { m_panelText = mainModule.FilePaths.Item(m_row); });
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
        Skip([&] {
            const std::int64_t fileId = m_rowData(m_row);
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
        mainModule.SelectedRows.AddRange(std::max(first, 1), last);
    }
    m_multipleSelection = m_ctrlDown;
}

void GridSelection::FollowRow() {
    mainModule.GridTopRow = m_topRow;
    if (RowIsVisible(m_row)) {
        return;
    }
    m_topRow = std::max(m_row <= m_topRow ? mainModule.GridTopRow - 1 : mainModule.GridTopRow + 1, 1);
}

bool GridSelection::RowIsVisible(std::int32_t row) const {
    return row < 1 ||
           (row >= m_topRow && row - m_topRow < m_visibleRows); // The header always stands in view.
}

void GridSelection::BringIntoView(std::int32_t row) {
    if (row < m_topRow) {
        m_topRow = row;
    } else if (!RowIsVisible(row)) {
        m_topRow = row - std::max(m_visibleRows, 1) + 1;
    }
}

std::optional<std::string> GridSelection::TakePanelText() {
    return std::exchange(m_panelText, std::nullopt);
}

std::vector<KontextItem> SetKontextItems(int mode) {
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
