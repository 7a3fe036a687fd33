// How grdMp3 paints: rows of the selection and the header with its sort arrow. GridView uses both.
#pragma once

#include "browser/GridSelection.h"
#include "browser/ListModel.h"

#include <QHeaderView>
#include <QStyledItemDelegate>

namespace quavernet {

/// What looks like a selection is cell colour. The current row carries the focus mark while the list has the
/// keyboard.
class RowPainter : public QStyledItemDelegate {
    Q_OBJECT
public:
    RowPainter(const GridSelection& selection, QObject* parent)
        : QStyledItemDelegate(parent), m_selection(selection) {}

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;

private:
    const GridSelection& m_selection;
};

/// Draws the sort arrow at the right edge of its cell; the text keeps clear of it.
class ArrowHeader : public QHeaderView {
    Q_OBJECT
public:
    ArrowHeader(const ListModel& model, QWidget* parent)
        : QHeaderView(Qt::Horizontal, parent), m_list(model) {}

protected:
    void paintSection(QPainter* painter, const QRect& rect, int section) const override;

private:
    const ListModel& m_list;
};

} // namespace quavernet
