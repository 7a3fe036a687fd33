// Lists and writes the comments of Ogg Vorbis files in process. Built by RealServices; the details dialog
// reaches it as VorbisCommentTool.
#pragma once

#include "adapters/vorbis/HeaderPages.h"
#include "platform/UserFiles.h"
#include "platform/VorbisCommentTool.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quavernet {

/// Not TagLib's way: that sorts the comments, changes the case of their keys and writes in place, so that a
/// kill tears the file. Here the comment packet, and the setup packet that shares pages with it, are packed
/// into new pages; where their number changes, the later pages of the stream get other numbers and checksums.
/// Everything else is copied.
class OggCommentWriter : public VorbisCommentTool {
public:
    /// Opens its files through `files`, which must outlive it.
    explicit OggCommentWriter(UserFiles& files) : m_files(files) {}

    std::vector<std::string> List(const std::string& path) override;
    void Write(const std::string& path, const std::vector<std::string>& comments) override;

private:
    void Remember(const std::string& path, const vorbis::PacketBytes& comment);

    UserFiles& m_files;
    std::string m_path;        ///< Of the last file listed or written.
    std::size_t m_comment = 0; ///< What its comment packet was then, as a hash.
};

} // namespace quavernet
