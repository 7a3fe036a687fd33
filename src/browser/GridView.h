// grdMp3 on the screen: hands mouse, key and drop facts to the selection and to the list pane, paints what
// the selection says, and scrolls by whole rows. The list pane owns it.
#pragma once

#include "browser/GridSelection.h"
#include "browser/ListModel.h"
#include "browser/TypedText.h"

#include <QAccessible>
#include <QElapsedTimer>
#include <QTableView>

#include <functional>
#include <string>
#include <vector>

namespace quavernet {

class RowPainter;

class GridView : public QTableView, private SelectionView, private QAccessible::ActivationObserver {
    Q_OBJECT
public:
    GridView(QWidget* parent, DragState& drag);
    ~GridView() override;

    /// A new list: the rows, with nothing selected.
    void SetRows(ListRows rows);
    ListModel& Model() { return m_model; }
    GridSelection& Selection() { return m_selection; }
    const GridSelection& Selection() const { return m_selection; }

    std::int64_t RowData(std::int32_t row) const override;
    std::int32_t TopRow() const override;
    void SetTopRow(std::int32_t row) override;
    bool RowIsVisible(std::int32_t row) const override;

    /// Text of the last column of the current row; empty if there is none.
    std::string CurrentFormat() const;

    /// The row under the mouse from 1; the place below the last row counts as Rows().
    std::int32_t MouseRow(const QPoint& position) const;

    void SetHeadToolTip(const QString& text);

    /// One notch of the wheel: up for a positive delta or none.
    void ScrollByNotch(int delta);

    std::function<void(const std::string&)> ShowInScanningPanel;
    /// Whether a drop of these paths would add any to the library.
    std::function<bool(const std::vector<std::string>&)> WouldAddFiles;

signals:
    /// Row 0 is the header.
    void DoubleClicked(std::int32_t mouseCol, std::int32_t mouseRow);
    void EnterPressed();
    void ControlStateChanged();        ///< The current row may be another one.
    void KontextItemsWanted(int mode); ///< 1: one selected row, 2: several.
    void KontextMenuWanted(const QPoint& globalPosition);
    void MouseMoved();
    void FilesDropped(const std::vector<std::string>& paths);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void SetScanningPanel(const std::string& text) override;
    void RepaintRows() override;
    void SelectionChanged() override { emit ControlStateChanged(); }
    void SetKontextItems(int mode) override { emit KontextItemsWanted(mode); }

    void accessibilityActiveChanged(bool) override { TellSelection(); }
    void TellSelection();
    void Press(const QMouseEvent& event, std::int32_t mouseRow);
    void Release();
    void Drag();
    void TakeFiles(QDropEvent& event) const;
    bool MoveByKey(const QKeyEvent& event);
    bool MoveByLetter(const QKeyEvent& event);
    void ShowMovedRow();
    bool SortByKey(const QKeyEvent& event);
    bool PasteByKey(QKeyEvent& event);
    std::int32_t RowsInView() const;
    void SetRowHeight();

    ListModel m_model;
    GridSelection m_selection;
    TypedText m_typed;
    QElapsedTimer m_clock; ///< Of the typing.
    RowPainter* m_painter = nullptr;
    QPoint m_pressPosition;
    bool m_takesFiles = false; ///< The drag that has entered has local files.
};

} // namespace quavernet
