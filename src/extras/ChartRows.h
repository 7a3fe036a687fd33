// The lines of the charts as the grid's model. frmChart owns it and gives it each fill.
#pragma once

#include "extras/Chart.h"

#include <QAbstractTableModel>

namespace quavernet {

class ChartRows : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    void SetContent(ChartContent content);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

    /// Not shown; screen readers say it.
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    ChartContent m_content;
};

} // namespace quavernet
