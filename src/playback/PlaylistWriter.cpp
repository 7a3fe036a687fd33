#include "playback/PlaylistWriter.h"

#include "app/MainModule.h"
#include "platform/Utf8.h"

namespace quavernet {

namespace {

constexpr std::size_t ExtensionLength = 4; // With its point. The rest of a longer one stays in the title.

} // namespace

PlaylistWriter::PlaylistWriter(const std::string& path, Place place)
    : m_file(place == Place::Temporary ? services.files->CreatePrivate(path) : services.files->Create(path)) {
    m_file->Append("#EXTM3U\r\n");
}

void PlaylistWriter::Add(const ADODB::Field& name, const ADODB::Field& length, const std::string& path) {
    const std::string storedName = name.Text();
    std::string lines = "#EXTINF:" + (length.IsNull() ? "0" : length.Text()) + ",";
    lines.append(DropRightCharacters(storedName, ExtensionLength)).append("\r\n");
    m_file->Append(lines.append(path).append("\r\n"));
}

} // namespace quavernet
