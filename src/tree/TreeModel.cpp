#include "tree/TreeModel.h"

#include "platform/RuntimeError.h"

#include <utility>

namespace quavernet {

TreeNode& TreeModel::Add(TreeNode* parent, std::string key, std::string text, const char* image,
                         const char* selectedImage) {
    if (Contains(key)) {
        throw RuntimeError(ErrorNumber::KeyNotUnique, "Key is not unique in collection");
    }
    TreeNode& node = m_nodes.emplace_back();
    node.Key = std::move(key);
    node.Text = std::move(text);
    node.Image = image;
    node.SelectedImage = selectedImage;
    node.Index = m_nodes.size();
    node.Parent = parent;
    if (parent != nullptr) {
        node.Row = parent->Children.size();
        parent->Children.push_back(&node);
    }
    m_byKey.emplace(node.Key, &node);
    return node;
}

TreeNode& TreeModel::Node(std::string_view key) {
    const auto found = m_byKey.find(key);
    if (found == m_byKey.end()) {
        throw RuntimeError(ErrorNumber::ElementNotFound, "Element not found");
    }
    return *found->second;
}

const TreeNode& TreeModel::Node(std::string_view key) const {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast): only looks the node up.
    return const_cast<TreeModel*>(this)->Node(key);
}

const TreeNode& TreeModel::SelectedItem() const {
    if (m_selected == nullptr) {
        throw RuntimeError(ErrorNumber::ObjectNotSet, "Object variable or With block variable not set");
    }
    return *m_selected;
}

} // namespace quavernet
