// grdMp3 on the screen: hands mouse and key facts to the selection, paints what it says, and scrolls by whole
// rows. The list pane owns it.
#pragma once

#include "browser/GridSelection.h"
#include "mainwindow/ListModel.h"

#include <QTableView>

#include <functional>

namespace quavernet {

class GridView : public QTableView, private GridWindow {
    Q_OBJECT
public:
    explicit GridView(QWidget* parent);

    /// A new list: the rows, with nothing selected.
    void SetRows(ListRows rows);
    ListModel& Model() { return m_model; }
    GridSelection& Selection() { return m_selection; }

    std::int64_t RowData(std::int32_t row) const override;
    std::int32_t TopRow() const override;
    void SetTopRow(std::int32_t row) override;
    bool RowIsVisible(std::int32_t row) const override;

    /// Text of the last column of the current row; empty if there is none.
    std::string CurrentFormat() const;

    std::function<void(const std::string&)> ShowInScanningPanel;

signals:
    void HeaderDoubleClicked(int column);
    void RowDoubleClicked(std::int32_t row);
    void EnterPressed();
    void ControlStateChanged(); ///< The current row may be another one.
    void KontextMenuWanted(const QPoint& globalPosition);
    void MouseMoved();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool viewportEvent(QEvent* event) override;

private:
    void SetScanningPanel(const std::string& text) override;
    void RepaintRows() override { viewport()->update(); }
    void SelectionChanged() override { emit ControlStateChanged(); }
    void SetKontextItems(int mode) override;

    std::int32_t MouseRow(const QPoint& position) const;
    void DragSelectedFiles();

    ListModel m_model;
    GridSelection m_selection;
    QPoint m_pressPosition;
};

} // namespace quavernet
