// How grdMp3 paints: rows of the selection and the header with its sort arrow. GridView uses both.
#pragma once

#include "browser/GridSelection.h"
#include "browser/ListModel.h"

#include <QHeaderView>
#include <QStyledItemDelegate>

namespace quavernet {

/// What looks like a selection is cell colour. The current row carries the focus mark while the list has the
/// keyboard. Texts keep a distance from the edges of their cells as long as there is room.
class RowPainter : public QStyledItemDelegate {
    Q_OBJECT
public:
    RowPainter(const GridSelection& selection, QObject* parent)
        : QStyledItemDelegate(parent), m_selection(selection) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

    /// Paints what is right of the last column of a row, so that tint and selection reach the edge.
    void PaintRest(QPainter& painter, const QRect& rest, std::int32_t row, const QPalette& palette) const;

private:
    const GridSelection& m_selection;
};

/// Draws the sort arrow at the right edge of its cell; the text keeps clear of it. The head goes on to the
/// edge of the list.
class ArrowHeader : public QHeaderView {
    Q_OBJECT
public:
    ArrowHeader(const ListModel& model, QWidget* parent)
        : QHeaderView(Qt::Horizontal, parent), m_list(model) {}

    /// Where the text of a section is written: beside the arrow, if it has one.
    QRect TextRect(const QRect& section, int column) const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;

private:
    int ArrowSide() const;

    const ListModel& m_list;
};

} // namespace quavernet
