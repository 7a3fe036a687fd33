#include "platform/TextLines.h"

#include "platform/CodePage.h"

#include <algorithm>
#include <span>

namespace quavernet {

namespace {

constexpr std::size_t BlockSize = std::size_t{64} << 10;
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

} // namespace

TextLines::TextLines(UserFiles& files, const std::string& path)
    : m_file(files.Open(path, BinaryFile::Access::Read)), m_block(BlockSize) {
    if (Fill() && m_rest.starts_with(ByteOrderMark)) {
        m_rest.remove_prefix(ByteOrderMark.size());
    }
}

bool TextLines::Fill() {
    const std::size_t count = m_file->ReadAt(m_offset, std::as_writable_bytes(std::span(m_block)));
    m_offset += count;
    m_rest = std::string_view(m_block.data(), count);
    return count > 0;
}

bool TextLines::Next(std::string& line) {
    line.clear();
    while (!m_rest.empty() || Fill()) {
        const std::size_t end = std::min(m_rest.find('\n'), m_rest.size());
        const std::string_view piece = m_rest.substr(0, end);
        line.append(piece.substr(0, LongestLine - line.size()));
        const bool isWhole = end < m_rest.size();
        m_rest.remove_prefix(isWhole ? end + 1 : end);
        if (isWhole) {
            if (line.ends_with('\r')) {
                line.pop_back();
            }
            return true;
        }
    }
    return !line.empty();
}

std::string DecodeText(std::string_view bytes) {
    return IsValidUtf8(bytes) ? std::string(bytes) : FromWindows1252(bytes);
}

} // namespace quavernet
