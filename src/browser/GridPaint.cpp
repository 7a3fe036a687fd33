#include "browser/GridPaint.h"

#include "widgets/Colours.h"
#include "widgets/Pictures.h"

#include <QPainter>
#include <QTableView>

#include <algorithm>
#include <utility>

namespace quavernet {

namespace {

constexpr int Padding = 5;      ///< Pixels from the edges of a cell to its text.
constexpr int LeastPadding = 1; ///< The same where the text would be cut otherwise.
constexpr int ArrowSize = 16;   ///< Of the picture, whose inner half is the arrow.

/// The text in its room, with dots only if the least padding doesn't help.
void DrawText(QPainter& painter, const QRect& room, Qt::Alignment alignment, const QString& text) {
    const QFontMetrics metrics = painter.fontMetrics();
    const int width = metrics.horizontalAdvance(text);
    const int padding = std::clamp((room.width() - width) / 2, LeastPadding, Padding);
    const QRect inner = room.adjusted(padding, 0, -padding, 0);
    painter.drawText(inner, static_cast<int>(alignment) | Qt::TextSingleLine,
                     width <= inner.width() ? text : metrics.elidedText(text, Qt::ElideRight, inner.width()));
}

// One pixel of the screen, also where a logical pixel is one and a half of them.
void DrawGridLines(QPainter& painter, const QRect& cell, const QColor& color) {
    QPen pen(color, 0);
    pen.setCosmetic(true);
    painter.setPen(pen);
    painter.drawLine(cell.right() + 1, cell.top(), cell.right() + 1, cell.bottom() + 1);
    painter.drawLine(cell.left(), cell.bottom() + 1, cell.right(), cell.bottom() + 1);
}

} // namespace

void RowPainter::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->state &= ~(QStyle::State_Selected | QStyle::State_HasFocus | QStyle::State_MouseOver);
    const std::int32_t row = index.row() + 1;
    if (m_selection.IsPainted(row)) {
        option->backgroundBrush = ColourOf(OwnColour::SelectionGround, option->palette);
        option->palette.setBrush(QPalette::Text,
                                 option->palette.brush(QPalette::Active, QPalette::HighlightedText));
    }
}

// One mark over the whole row: the row is what the keys move.
void RowPainter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                       const QModelIndex& index) const {
    QStyleOptionViewItem cell = option;
    initStyleOption(&cell, index);
    painter->save();
    if (cell.backgroundBrush.style() != Qt::NoBrush) {
        painter->fillRect(cell.rect, cell.backgroundBrush);
    }
    painter->setFont(cell.font);
    painter->setPen(cell.palette.color(QPalette::Text));
    DrawText(*painter, cell.rect, cell.displayAlignment, cell.text);
    const auto* view = qobject_cast<const QTableView*>(cell.widget);
    if (view != nullptr && view->showGrid()) {
        const auto color =
            static_cast<QRgb>(view->style()->styleHint(QStyle::SH_Table_GridLineColor, &option, view));
        DrawGridLines(*painter, cell.rect, QColor::fromRgba(color));
    }
    if (index.row() + 1 == m_selection.RowSel() && view != nullptr && view->hasFocus()) {
        painter->setPen(QPen(cell.palette.color(QPalette::Text), 1, Qt::DotLine));
        painter->drawLine(cell.rect.topLeft(), cell.rect.topRight());
        painter->drawLine(cell.rect.bottomLeft(), cell.rect.bottomRight());
    }
    painter->restore();
}

void RowPainter::PaintRest(QPainter& painter, const QRect& rest, std::int32_t row,
                           const QPalette& palette) const {
    if (m_selection.IsPainted(row)) {
        painter.fillRect(rest, ColourOf(OwnColour::SelectionGround, palette));
    } else if (row % 2 == 0) {
        painter.fillRect(rest, palette.brush(QPalette::AlternateBase));
    }
}

int ArrowHeader::ArrowSide() const {
    return std::max(ArrowSize, fontMetrics().height());
}

QRect ArrowHeader::TextRect(const QRect& section, int column) const {
    // A quarter of the picture is empty on either side of the arrow, and may lie under the text's padding.
    return column == m_list.SortColumn() ? section.adjusted(0, 0, -ArrowSide() * 3 / 4, 0) : section;
}

void ArrowHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    if (!rect.isValid()) {
        return;
    }
    QStyleOptionHeader option;
    initStyleOption(&option);
    initStyleOptionForIndex(&option, section);
    option.rect = rect;
    const QString text = std::exchange(option.text, QString());
    painter->save();
    style()->drawControl(QStyle::CE_Header, &option, painter, this);
    painter->restore();
    painter->save();
    painter->setPen(option.palette.color(QPalette::ButtonText));
    DrawText(*painter, TextRect(rect, section), option.textAlignment, text);
    painter->restore();
    if (section == m_list.SortColumn()) {
        const int side = ArrowSide();
        const QRect place(rect.right() - side + side / 8, rect.center().y() - side / 2, side, side);
        Picture(m_list.SortAscending() ? "ArrowUp" : "ArrowDown").paint(painter, place);
    }
}

void ArrowHeader::paintEvent(QPaintEvent* event) {
    QHeaderView::paintEvent(event);
    const int end = length() - offset();
    if (end < viewport()->width()) {
        QPainter painter(viewport());
        QStyleOptionHeader option;
        initStyleOption(&option);
        option.rect = QRect(end, 0, viewport()->width() - end, viewport()->height());
        option.position = QStyleOptionHeader::End;
        style()->drawControl(QStyle::CE_HeaderSection, &option, &painter, this);
    }
}

} // namespace quavernet
