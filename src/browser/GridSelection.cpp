#include "browser/GridSelection.h"

#include "app/MainModule.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <utility>

namespace quavernet {

void GridSelection::Reset(std::int32_t rows) {
    m_rows = rows;
    m_painted.clear();
    m_row = m_rowSel = 0;
    m_window.RepaintRows();
}

void GridSelection::MouseDown(std::int32_t mouseRow, GridButton button, GridModifiers modifiers) {
    if (m_rows < 2) {
        m_window.SelectionChanged();
        return;
    }
    if (button == GridButton::Right) {
        m_rightClicked = true;
        if (mainModule.SelectedRows.Count() <= 1 && mouseRow >= 1) {
            m_row = m_rowSel = mouseRow;
            SelChange();
            mainModule.DetailsRow = m_row;
            m_window.SetKontextItems(1);
        } else {
            m_window.SetKontextItems(2);
        }
        m_window.SelectionChanged();
        return;
    }
    m_rightClicked = false;
    if (button == GridButton::Left) {
        m_leftDown = true;
        if (modifiers.Shift && !modifiers.Ctrl && !modifiers.Alt) {
            m_highLight = true;
            m_shiftDown = true;
        } else if (modifiers.Ctrl && !modifiers.Shift && !modifiers.Alt) {
            m_ctrlDown = true;
        }
    }
    if (mouseRow >= 1) {
        m_rowSel = mouseRow;
        if (!m_shiftDown || m_row < 1) {
            m_row = mouseRow;
        }
        // A press on the row that is selected already counts like any other.
        SelChange();
    }
    m_window.SelectionChanged();
}

void GridSelection::MouseUp() {
    m_highLight = m_ctrlDown = m_shiftDown = m_leftDown = false;
}

void GridSelection::MoveTo(std::int32_t row, bool extend) {
    if (m_rows < 2) {
        return;
    }
    m_rowSel = std::clamp(row, 1, m_rows - 1);
    if (!extend || m_row < 1) {
        m_row = m_rowSel;
    }
    SelChange();
}

void GridSelection::SelChange() {
    m_rowDeselected = false;
    if (m_rows >= 2) {
        if (m_leftDown && !m_ctrlDown && !m_shiftDown) {
            m_row = m_rowSel;
        }
        if (!m_ctrlDown) {
            m_painted.clear();
        }
        if (m_ctrlDown && m_painted.contains(m_row)) {
            PaintRange(m_row, m_rowSel, false);
            // The collection knows rows by their numbers, not by their file ids: the unpainted row stays a
            // member, and commands go on acting on it. Only a row whose number happens to equal the id goes.
            const std::int64_t fileId = m_window.RowData(m_row);
            if (fileId <= m_rows) {
                mainModule.SelectedRows.Remove(static_cast<std::int32_t>(fileId));
            }
            m_rowDeselected = true;
        } else {
            PaintRange(m_row, m_rowSel, true);
        }
        m_window.RepaintRows();
        AddSelectedRows(m_row, m_rowSel);
        Skip([&] { m_window.SetScanningPanel(mainModule.FilePaths.Item(m_row)); });
    }
    ScrollToRow();
}

void GridSelection::AddSelectedRows(std::int32_t first, std::int32_t last) {
    if (!m_ctrlDown) {
        mainModule.SelectedRows.Clear();
    }
    if (!m_ctrlDown || !m_rowDeselected) {
        if (last <= first) {
            std::swap(first, last);
        }
        for (std::int32_t row = first; row <= last; ++row) {
            mainModule.SelectedRows.Add(row);
        }
    }
}

void GridSelection::PaintRange(std::int32_t first, std::int32_t last, bool paint) {
    for (std::int32_t row = std::min(first, last); row <= std::max(first, last); ++row) {
        if (paint) {
            m_painted.insert(row);
        } else {
            m_painted.erase(row);
        }
    }
}

void GridSelection::ScrollToRow() {
    mainModule.GridTopRow = m_window.TopRow();
    if (m_rows < 2 || m_window.RowIsVisible(m_rowSel)) {
        return;
    }
    // One row at a time: the keyboard scrolls the list by single rows.
    const bool up = m_rowSel <= mainModule.GridTopRow;
    m_window.SetTopRow(mainModule.GridTopRow + (up ? -1 : 1));
}

} // namespace quavernet
