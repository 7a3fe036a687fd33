#include "tree/TreeItems.h"

#include "tree/NodeKey.h"
#include "widgets/Colours.h"
#include "widgets/Pictures.h"

#include <QFont>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

#include <utility>

namespace quavernet {

namespace {

// A picture that has no selected version would be blue on blue, so it takes
// the colour of the marked text.
QIcon ReadableWhenSelected(const QIcon& picture, const QPalette& palette) {
    QIcon icon;
    for (const int side : {16, 24, 32, 48}) {
        QPixmap pixmap = picture.pixmap(side);
        icon.addPixmap(pixmap);
        QPainter painter(&pixmap);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(pixmap.rect(), palette.color(QPalette::HighlightedText));
        painter.end();
        icon.addPixmap(pixmap, QIcon::Selected);
    }
    return icon;
}

} // namespace

void TreeItems::Show(TreeModel model) {
    beginResetModel();
    m_model = std::move(model);
    endResetModel();
}

QModelIndex TreeItems::IndexOf(const TreeNode& node) const {
    return createIndex(static_cast<int>(node.Row), 0, &node);
}

const TreeNode* TreeItems::NodeOf(const QModelIndex& index) {
    return static_cast<const TreeNode*>(index.constInternalPointer());
}

void TreeItems::SetRootText(std::string text) {
    TreeNode& root = m_model.Node(RootKey);
    root.Text = std::move(text);
    const QModelIndex changed = IndexOf(root);
    emit dataChanged(changed, changed, {Qt::DisplayRole});
}

QModelIndex TreeItems::index(int row, int column, const QModelIndex& parent) const {
    if (row < 0 || row >= rowCount(parent) || column != 0) {
        return {};
    }
    const TreeNode* above = NodeOf(parent);
    return above == nullptr ? IndexOf(m_model.Nodes().front())
                            : IndexOf(*above->Children[static_cast<std::size_t>(row)]);
}

QModelIndex TreeItems::parent(const QModelIndex& child) const {
    const TreeNode* node = NodeOf(child);
    return node == nullptr || node->Parent == nullptr ? QModelIndex() : IndexOf(*node->Parent);
}

int TreeItems::rowCount(const QModelIndex& parent) const {
    if (const TreeNode* node = NodeOf(parent)) {
        return static_cast<int>(node->Children.size());
    }
    return m_model.Nodes().empty() ? 0 : 1; // The root.
}

int TreeItems::columnCount(const QModelIndex&) const {
    return 1;
}

bool TreeItems::hasChildren(const QModelIndex& parent) const {
    return rowCount(parent) > 0;
}

QVariant TreeItems::data(const QModelIndex& index, int role) const {
    const TreeNode* node = NodeOf(index);
    if (node == nullptr) {
        return {};
    }
    switch (role) {
    case Qt::DisplayRole:
        return ToLine(node->Text);
    case Qt::DecorationRole:
        return IconOf(*node);
    case Qt::FontRole:
        if (node->Bold) {
            QFont font = m_view.font();
            font.setBold(true);
            return font;
        }
        return {};
    case Qt::ForegroundRole:
        return node->ForeColor == TreeNode::TextColor
                   ? QVariant()
                   : QVariant(QBrush(ColourOfNumber(node->ForeColor, m_view.palette())));
    default:
        return {};
    }
}

Qt::ItemFlags TreeItems::flags(const QModelIndex& index) const {
    const TreeNode* node = NodeOf(index);
    if (node == nullptr) {
        return Qt::NoItemFlags;
    }
    const Qt::ItemFlags all = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return KindOfKey(node->Key) == NodeKind::File ? all | Qt::ItemNeverHasChildren : all;
}

// The picture at rest, and the one of the selected node.
QIcon TreeItems::IconOf(const TreeNode& node) const {
    if (m_iconColors != m_view.palette().cacheKey()) {
        m_iconColors = m_view.palette().cacheKey();
        m_icons.clear();
    }
    QIcon& icon = m_icons[node.Image];
    if (icon.isNull()) {
        if (*node.SelectedImage == '\0') {
            icon = ReadableWhenSelected(Picture(node.Image), m_view.palette());
        } else {
            icon = Picture(node.Image);
            icon.addFile(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(node.SelectedImage)), QSize(),
                         QIcon::Selected);
        }
    }
    return icon;
}

} // namespace quavernet
