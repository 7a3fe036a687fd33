// The table model over the listed rows: texts are made when a row is painted, and the model is reset once per
// load.
#pragma once

#include "browser/ListQuery.h"

#include <QAbstractTableModel>
#include <QStringList>

namespace quavernet {

class ListModel : public QAbstractTableModel {
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    void SetRows(ListRows rows);
    const ListRows& Rows() const { return m_rows; }

    /// Texts of the six headers, and the column that carries the sort arrow (-1 for none).
    void SetHeaders(const QStringList& headers);
    void SetSortArrow(int column, bool ascending);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    int SortColumn() const { return m_sortColumn; }
    bool SortAscending() const { return m_ascending; }

private:
    ListRows m_rows;
    QStringList m_headers;
    int m_sortColumn = 0;
    bool m_ascending = true;
};

} // namespace quavernet
