#include "browser/ListModel.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/TextNumbers.h"

namespace quavernet {

namespace {

// Texts on the left, numbers on the right, and their heads above them.
QVariant AlignmentOf(int column) {
    const auto at = static_cast<ListColumn>(column);
    const bool isNumber = at == ListColumn::Length || at == ListColumn::Size || at == ListColumn::Quality;
    return QVariant((isNumber ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
}

} // namespace

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
        return AlignmentOf(index.column());
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
    if (role == Qt::AccessibleTextRole && section == m_sortColumn) {
        return m_headers.value(section) + QStringLiteral(", ") +
               ToQString(LoadResString(m_ascending ? Texts::SortedAscending : Texts::SortedDescending));
    }
    if (role == Qt::TextAlignmentRole) {
        return AlignmentOf(section);
    }
    return {};
}

} // namespace quavernet
