// The least that a tree of the toolkit takes: a view with no more than rows in it. Floors of the tree's jobs
// are made of it.
#pragma once

#include <QAbstractItemModel>
#include <QTreeView>

#include <cstddef>

namespace quavernet::bench {

/// A root, so many groups below it, and so many rows in each.
class BareRows : public QAbstractItemModel {
public:
    BareRows(int groups, int rowsEach) : m_groups(groups), m_rowsEach(rowsEach) {}

    /// The view takes the rows as new ones.
    void Reset() {
        beginResetModel();
        endResetModel();
    }

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override {
        return createIndex(row, column, IdBelow(parent));
    }
    QModelIndex parent(const QModelIndex& child) const override {
        switch (child.internalId()) {
        case RootId:
            return {};
        case GroupId:
            return createIndex(0, 0, RootId);
        default:
            return createIndex(static_cast<int>(child.internalId() - FirstRowId), 0, GroupId);
        }
    }
    int rowCount(const QModelIndex& parent = {}) const override {
        if (!parent.isValid()) {
            return 1;
        }
        return parent.internalId() == RootId ? m_groups : parent.internalId() == GroupId ? m_rowsEach : 0;
    }
    int columnCount(const QModelIndex& = {}) const override { return 1; }
    QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole ? QVariant(QString::number(index.row())) : QVariant();
    }

private:
    static constexpr quintptr RootId = 0;
    static constexpr quintptr GroupId = 1;
    static constexpr quintptr FirstRowId = 2; // Plus the number of the group.

    static quintptr IdBelow(const QModelIndex& parent) {
        if (!parent.isValid()) {
            return RootId;
        }
        return parent.internalId() == RootId ? GroupId : FirstRowId + static_cast<quintptr>(parent.row());
    }

    int m_groups;
    int m_rowsEach;
};

class BareTree : public QTreeView {
public:
    struct Size {
        std::size_t groups = 0;
        std::size_t rows = 0; ///< Of all groups together.
    };

    explicit BareTree(const Size& size)
        : m_rows(static_cast<int>(size.groups), static_cast<int>(size.rows / size.groups)) {
        setHeaderHidden(true);
        setUniformRowHeights(true);
        setModel(&m_rows);
    }

    /// As large as another tree, and beside the window that this is in.
    void ShowLike(const QWidget& tree) {
        resize(tree.size());
        move(tree.window()->frameGeometry().topRight());
        show();
    }

    /// Shows all rows from the start, with the groups open or closed.
    void Fill(bool open) {
        m_rows.Reset();
        const QModelIndex root = m_rows.index(0, 0);
        expand(root);
        for (int group = 0; open && group < m_rows.rowCount(root); ++group) {
            expand(m_rows.index(group, 0, root));
        }
    }

private:
    BareRows m_rows;
};

} // namespace quavernet::bench
