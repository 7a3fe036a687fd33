// The keys of the category tree's nodes and their grammar: "Parent" is the root, "CAT_" and a name a
// category, "file", an entry's id, "pos" and its position an entry. Whoever wants a node's name or place
// reads it from here, never from the node's text.
#pragma once

#include <string>
#include <string_view>

namespace quavernet {

inline constexpr std::string_view RootKey = "Parent";

enum class NodeKind { Root, Category, File };

NodeKind KindOfKey(std::string_view key);

std::string CategoryKey(std::string_view category);
std::string FileKey(std::string_view fileCategoryId, std::string_view position);

/// The name in a category's key: everything from the fifth character on.
std::string CategoryFromKey(std::string_view key);

/// The position in an entry's key, as it is there; empty if the key has none.
std::string PositionFromKey(std::string_view key);

/// The id in an entry's key. Throws RuntimeError 5 if it is not the key of an entry.
std::string GetFileCategoryIdFromKey(std::string_view key);

} // namespace quavernet
