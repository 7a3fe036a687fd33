#include "playback/PlaylistWriter.h"

#include "app/MainModule.h"
#include "platform/Utf8.h"
#include "tree/PlaylistFile.h"

#include <algorithm>
#include <string_view>

namespace quavernet {

namespace {

constexpr std::size_t ExtensionLength = 4; // With its point. The rest of a longer one stays in the title.

// A name may hold any bytes. What comes after a line break in it would be a line of its own.
std::string OnOneLine(std::string_view title) {
    std::string line(title);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    return line;
}

} // namespace

PlaylistWriter::PlaylistWriter(const std::string& path, Place place)
    : m_file(place == Place::Temporary ? services.files->CreatePrivate(path) : services.files->Create(path)) {
    m_file->Append("#EXTM3U\r\n");
}

void PlaylistWriter::Add(const ADODB::Field& name, const ADODB::Field& length, const std::string& path) {
    const std::string storedName = name.Text();
    std::string lines = "#EXTINF:" + (length.IsNull() ? "0" : length.Text()) + ",";
    lines.append(OnOneLine(DropRightCharacters(storedName, ExtensionLength))).append("\r\n");
    m_file->Append(lines.append(LineOfFile(path)).append("\r\n"));
}

} // namespace quavernet
