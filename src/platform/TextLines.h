// Text files of the user, read line by line without ever holding a whole file, and the code set of what is
// in them. Called by the readers of playlists and of the tree's exchange file.
#pragma once

#include "platform/UserFiles.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet {

class TextLines {
public:
    /// A longer line is cut here, so that a file of any size needs little memory: no path is as long.
    static constexpr std::size_t LongestLine = std::size_t{16} << 20;

    /// Opens a plain file for reading. Throws OpenError.
    TextLines(UserFiles& files, const std::string& path);

    /// Reads the next line: its bytes as they are, without the LF or CR LF that ends it. A CR elsewhere and a
    /// NUL are bytes of the line. What follows the last end of a line is a line if it is not empty. A byte
    /// order mark at the beginning of the file belongs to no line. False after the last line; the text is
    /// then empty. Throws RuntimeError 57 if the device fails.
    bool Next(std::string& line);

private:
    bool Fill();

    std::unique_ptr<BinaryFile> m_file;
    std::uint64_t m_offset = 0; ///< In the file, of the block after this one.
    std::vector<char> m_block;
    std::string_view m_rest; ///< What is left of the block.
};

/// The text of bytes that are a line, a part of one or a whole file without its byte order mark: the bytes
/// themselves if they are UTF-8, else what they are in Windows-1252.
std::string DecodeText(std::string_view bytes);

} // namespace quavernet
