// The nodes of the category tree as the toolkit's views ask for them. The tree's view shows them; nothing is
// copied for it, whatever the number of entries.
#pragma once

#include "tree/TreeModel.h"

#include <QAbstractItemModel>
#include <QIcon>

#include <map>
#include <string_view>

class QWidget;

namespace quavernet {

class TreeItems : public QAbstractItemModel {
    Q_OBJECT
public:
    /// Font and colours of the nodes follow those of the view.
    explicit TreeItems(const QWidget& view) : m_view(view) {}

    /// Replaces the tree. Indexes of the old one are no good any more.
    void Show(TreeModel model);

    TreeModel& Model() { return m_model; }
    const TreeModel& Model() const { return m_model; }

    QModelIndex IndexOf(const TreeNode& node) const;
    /// nullptr for no index.
    static const TreeNode* NodeOf(const QModelIndex& index);

    /// The root's text in another language.
    void SetRootText(std::string text);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    bool hasChildren(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    QIcon IconOf(const TreeNode& node) const;

    const QWidget& m_view;
    TreeModel m_model;
    mutable std::map<std::string_view, QIcon> m_icons; ///< By the name of the picture at rest.
    mutable qint64 m_iconColors = 0;                   ///< The palette that they were made for.
};

} // namespace quavernet
