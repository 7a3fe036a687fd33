// What stands in for the command-line tool that lists and writes the comments of Ogg Vorbis files. The
// adapter lives in adapters/vorbis and works in process; the details dialog calls it.
#pragma once

#include <string>
#include <vector>

namespace quavernet {

/// Lists and writes the comments of Ogg Vorbis files, of which a comment is any bytes, "KEY=value" in UTF-8
/// as a rule: what is listed and written again keeps its bytes, line ends and NULs included.
class VorbisCommentTool {
public:
    virtual ~VorbisCommentTool() = default;

    /// The comments of the file's first Vorbis stream, in their order. Throws OpenError, and RuntimeError 75
    /// if the file holds no Vorbis stream or its headers are not whole (one of more than 64 MB counts as
    /// that), 57 if the device fails.
    virtual std::vector<std::string> List(const std::string& path) = 0;

    /// Puts these comments in place of the stream's own, in their order. The vendor text, the audio, every
    /// other stream and whatever else the file holds stay byte for byte; rights, times and links stay as
    /// UserFiles tells. The file is either the old or the new one, never torn. Throws as List does, and
    /// RuntimeError 61 if the disk is full, and 70 if another program changed the file while it was written,
    /// or its comments since this object listed or wrote them last; then the file is as it was.
    virtual void Write(const std::string& path, const std::vector<std::string>& comments) = 0;
};

} // namespace quavernet
