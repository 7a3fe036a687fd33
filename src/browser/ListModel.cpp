#include "browser/ListModel.h"

#include "adapters/qt/QtText.h"

namespace quavernet {

void ListModel::SetRows(ListRows rows) {
    beginResetModel();
    m_rows = std::move(rows);
    endResetModel();
}

void ListModel::SetHeaders(const QStringList& headers) {
    m_headers = headers;
    emit headerDataChanged(Qt::Horizontal, 0, ListColumnCount - 1);
}

void ListModel::SetSortArrow(int column, bool ascending) {
    m_sortColumn = column;
    m_ascending = ascending;
    emit headerDataChanged(Qt::Horizontal, 0, ListColumnCount - 1);
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_rows.Count());
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : ListColumnCount;
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (role == Qt::DisplayRole) {
        return ToLine(
            m_rows.Text(static_cast<std::size_t>(index.row()) + 1, static_cast<ListColumn>(index.column())));
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    }
    return {};
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return m_headers.value(section);
    }
    if (role == Qt::TextAlignmentRole) {
        return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    }
    return {};
}

} // namespace quavernet
