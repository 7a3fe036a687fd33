#include "playback/M3uReader.h"

#include "app/MainModule.h"
#include "tree/PlaylistFile.h"

namespace quavernet {

M3uReader::M3uReader(const std::string& path, bool checkExists)
    : m_lines(*services.files, path), m_checkExists(checkExists) {}

bool M3uReader::Next(std::string& path) {
    path.clear();
    if (!m_lines.Next(m_line)) {
        return false;
    }
    if (!m_line.starts_with('#')) {
        path = FileOfLine(m_line);
        if (path.empty() && !m_checkExists) {
            path = DecodeText(m_line);
        }
    }
    return true;
}

} // namespace quavernet
