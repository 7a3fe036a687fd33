// What stands in for the command-line tool that lists and writes the comments of Ogg Vorbis files. The
// adapter lives in adapters/vorbis; the details dialog calls it.
#pragma once

#include <string>
#include <vector>

namespace quavernet {

/// Lists and writes the comments of Ogg Vorbis files.
class VorbisCommentTool {
public:
    virtual ~VorbisCommentTool() = default;

    /// The comments of the file's first Vorbis stream, in their order: "KEY=value" each, UTF-8 as it is
    /// stored, line ends in a value included. Throws RuntimeError 75 if the file can't be opened or read, or
    /// holds no whole Vorbis comment.
    virtual std::vector<std::string> List(const std::string& path) = 0;

    /// Puts these comments in place of the stream's own, in their order; the vendor text, the audio and every
    /// other stream stay byte for byte. The file is either the old or the new one, never torn. Throws
    /// RuntimeError as List does, 61 if the disk is full, 57 if the device fails, and 70 if another program
    /// changed the file in the meantime; then the file is as it was.
    virtual void Write(const std::string& path, const std::vector<std::string>& comments) = 0;
};

} // namespace quavernet
