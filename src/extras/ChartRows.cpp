#include "extras/ChartRows.h"

#include "adapters/qt/QtText.h"

#include <utility>

namespace quavernet {

void ChartRows::SetContent(ChartContent content) {
    beginResetModel();
    m_content = std::move(content);
    endResetModel();
}

int ChartRows::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_content.Lines.size());
}

int ChartRows::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(m_content.Headers.size());
}

QVariant ChartRows::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const auto column = static_cast<std::size_t>(index.column());
    if (role == Qt::DisplayRole) {
        return ToLine(m_content.Lines[static_cast<std::size_t>(index.row())][column]);
    }
    if (role == Qt::TextAlignmentRole) {
        const bool isNumber = column == 0 || (column == 2 && m_content.IsTopList);
        return static_cast<int>(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft));
    }
    return {};
}

QVariant ChartRows::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole) {
        return ToQString(m_content.Headers[static_cast<std::size_t>(section)]);
    }
    return {};
}

} // namespace quavernet
