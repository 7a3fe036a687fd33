#include "browser/GridPaint.h"

#include "widgets/Pictures.h"

#include <QPainter>

namespace quavernet {

void RowPainter::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
    const std::int32_t row = index.row() + 1;
    if (m_selection.IsPainted(row)) {
        option->backgroundBrush = option->palette.brush(QPalette::Active, QPalette::Highlight);
        option->palette.setBrush(QPalette::Text,
                                 option->palette.brush(QPalette::Active, QPalette::HighlightedText));
    }
}

// One mark over the whole row: the row is what the keys move.
void RowPainter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
    const std::int32_t row = index.row() + 1;
    if (row != m_selection.RowSel() || option.widget == nullptr || !option.widget->hasFocus()) {
        return;
    }
    const bool painted = m_selection.IsPainted(row);
    painter->save();
    painter->setPen(
        QPen(option.palette.color(painted ? QPalette::HighlightedText : QPalette::Text), 1, Qt::DotLine));
    painter->drawLine(option.rect.topLeft(), option.rect.topRight());
    painter->drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
    painter->restore();
}

void ArrowHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    painter->save();
    QHeaderView::paintSection(painter, rect, section);
    painter->restore();
    if (section == m_list.SortColumn()) {
        constexpr int Size = 16;
        const QRect place(rect.right() - Size - 3, rect.center().y() - Size / 2, Size, Size);
        Picture(m_list.SortAscending() ? "ArrowUp" : "ArrowDown").paint(painter, place);
    }
}

} // namespace quavernet
