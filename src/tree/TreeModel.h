// The category tree as values: one root, the categories under it, the entries under each category. LoadTree
// builds it again after every change; the tree's form shows it, and drop, menus and player read it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quavernet {

/// Failures of the tree's nodes, by the numbers of the tree control.
namespace ErrorNumber {
inline constexpr int ObjectNotSet = 91;
inline constexpr int ElementNotFound = 35601;
inline constexpr int KeyNotUnique = 35602;
} // namespace ErrorNumber

struct TreeNode {
    static constexpr std::uint32_t TextColor = 0;            ///< The tree's own text colour.
    static constexpr std::uint32_t CategoryColor = 0xC00000; ///< Blue, green, red: blue 192.

    std::string Key;
    std::string Text;
    const char* Image = "";         ///< Names of pictures: "parent", "close", "open", "file".
    const char* SelectedImage = ""; ///< Empty: none.
    bool Bold = false;
    std::uint32_t ForeColor = TextColor;
    bool Expanded = false;
    std::size_t Index = 0; ///< From 1, in the order in which the nodes were added.
    std::size_t Row = 0;   ///< Place among the parent's children, from 0.
    TreeNode* Parent = nullptr;
    std::vector<TreeNode*> Children;
};

class TreeModel {
public:
    TreeModel() = default;
    TreeModel(TreeModel&&) = default;
    TreeModel& operator=(TreeModel&&) = default;

    /// Appends a node as the last child of the parent (nullptr: of no node). Throws RuntimeError 35602 if the
    /// key is taken.
    TreeNode& Add(TreeNode* parent, std::string key, std::string text, const char* image,
                  const char* selectedImage);

    /// Throws RuntimeError 35601 if there is no such node.
    TreeNode& Node(std::string_view key);
    const TreeNode& Node(std::string_view key) const;
    bool Contains(std::string_view key) const { return m_byKey.contains(key); }

    /// In the order in which they were added.
    const std::deque<TreeNode>& Nodes() const { return m_nodes; }

    /// The selected node. Throws RuntimeError 91 if none is.
    const TreeNode& SelectedItem() const;
    bool HasSelection() const { return m_selected != nullptr; }
    void Select(std::string_view key) { m_selected = &Node(key); }
    void ClearSelection() { m_selected = nullptr; }

    /// The node that is marked as the target of a drop, or nullptr.
    const TreeNode* DropHighlight() const { return m_dropHighlight; }
    void SetDropHighlight(std::string_view key) { m_dropHighlight = &Node(key); }
    void ClearDropHighlight() { m_dropHighlight = nullptr; }

    /// What ADODB::Connection::ChangesOfOthers was when the nodes began to be read.
    std::int64_t ChangesOfOthers() const { return m_changesOfOthers; }
    void SetChangesOfOthers(std::int64_t changes) { m_changesOfOthers = changes; }

private:
    // Nodes never move, so that the keys and the pointers between them stay good.
    std::deque<TreeNode> m_nodes;
    std::unordered_map<std::string_view, TreeNode*> m_byKey;
    TreeNode* m_selected = nullptr;
    TreeNode* m_dropHighlight = nullptr;
    std::int64_t m_changesOfOthers = 0;
};

} // namespace quavernet
