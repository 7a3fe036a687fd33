#include "tree/NodeKey.h"

#include "platform/RuntimeError.h"

namespace quavernet {

namespace {

constexpr std::string_view CategoryMark = "CAT_";
constexpr std::string_view FileMark = "file";
constexpr std::string_view PositionMark = "pos";
constexpr std::size_t MarkLength = 4; // Of both kinds.

} // namespace

NodeKind KindOfKey(std::string_view key) {
    if (key == RootKey) {
        return NodeKind::Root;
    }
    return key.starts_with(FileMark) ? NodeKind::File : NodeKind::Category;
}

std::string CategoryKey(std::string_view category) {
    return std::string(CategoryMark).append(category);
}

std::string FileKey(std::string_view fileCategoryId, std::string_view position) {
    return std::string(FileMark).append(fileCategoryId).append(PositionMark).append(position);
}

std::string CategoryFromKey(std::string_view key) {
    return key.size() < MarkLength ? std::string() : std::string(key.substr(MarkLength));
}

std::string PositionFromKey(std::string_view key) {
    const std::size_t mark = key.find(PositionMark);
    return mark == std::string_view::npos ? std::string()
                                          : std::string(key.substr(mark + PositionMark.size()));
}

std::string GetFileCategoryIdFromKey(std::string_view key) {
    const std::size_t mark = key.find(PositionMark);
    if (KindOfKey(key) != NodeKind::File || mark == std::string_view::npos) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall, "Invalid procedure call or argument");
    }
    return std::string(key.substr(MarkLength, mark - MarkLength));
}

} // namespace quavernet
