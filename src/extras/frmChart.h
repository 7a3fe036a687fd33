// The window of the charts: the most played or the newest files. Opened by the toolbar keys "top" and "date",
// beside which it stays open.
#pragma once

#include "extras/Chart.h"
#include "extras/ChartRows.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmChart;
}

namespace quavernet {

class LibraryViews;
class PlayerWindow;

class frmChart : public QDialog {
    Q_OBJECT
public:
    /// Closes with its owner.
    frmChart(QWidget* owner, LibraryViews& views, PlayerWindow& player);
    ~frmChart() override;

    /// Loads the list that a flag of mainModule stands for, in an open window too, and brings the window up.
    void Open(bool& flag);

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    void Form_Load();
    void PlaceControls();
    int PlaceColumns(int labelHeight);
    int RowsShown(int rowHeight) const;
    void Show(ChartContent content);
    void grdChart_DblClick(int row);
    void cmdShowInList_Click();

    std::unique_ptr<Ui::frmChart> m_ui;
    LibraryViews& m_views;
    PlayerWindow& m_player;
    Chart m_chart;
    ChartRows m_rows;
};

} // namespace quavernet
