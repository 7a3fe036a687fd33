#include "inspect/FileBytes.h"

#include "app/MainModule.h"
#include "platform/RuntimeError.h"

#include <algorithm>

namespace quavernet {

FileBytes::FileBytes(const std::string& path) {
    try {
        m_file = services.files->Open(path, BinaryFile::Access::Read);
        const std::size_t count = m_file->ReadAt(0, m_buffer);
        m_head = std::span<const std::byte>(m_buffer.data(), count);
        m_size = std::max<std::uint64_t>(m_file->Size(), count);
        m_open = true;
    } catch (const RuntimeError&) {
        m_file.reset(); // A file that can't be read is inspected as one that is not there.
    }
}

FileBytes::FileBytes(std::span<const std::byte> contents)
    : m_contents(contents), m_head(contents.first(std::min(contents.size(), HeadSize))),
      m_size(contents.size()), m_open(true) {}

bool FileBytes::ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const {
    const std::span<const std::byte> known = m_file ? m_head : m_contents;
    if (offset <= known.size() && bytes.size() <= known.size() - offset) {
        std::copy_n(known.begin() + static_cast<std::ptrdiff_t>(offset), bytes.size(), bytes.begin());
        return true;
    }
    if (!m_file || offset > m_size) {
        return false;
    }
    try {
        return m_file->ReadAt(offset, bytes) == bytes.size();
    } catch (const RuntimeError&) {
        return false;
    }
}

} // namespace quavernet
