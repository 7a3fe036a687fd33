// Describes Ogg files in process, in the lines of the command-line tool ogginfo. Built by RealServices; the
// scanner and the details dialog reach it as OggInfoTool.
#pragma once

#include "adapters/vorbis/ByteSource.h"
#include "platform/OggInfoTool.h"
#include "platform/UserFiles.h"

#include <string>
#include <vector>

namespace quavernet {

/// Walks over the pages and reads the header packets; audio is never decoded. Streams that are no Vorbis are
/// named and passed over: a file of them alone has no nominal bit rate, so that a scan would not store it
/// either way. Warnings that carry no text of the file are left out.
class OggInfoReader : public OggInfoTool {
public:
    /// Opens its files through `files`, which must outlive it.
    explicit OggInfoReader(UserFiles& files) : m_files(files) {}

    std::string Run(const std::vector<std::string>& paths) override;

private:
    UserFiles& m_files;
};

namespace vorbis {

/// Appends the lines of one opened file.
void AppendOggInfo(const std::string& path, ByteSource& source, std::string& lines);

} // namespace vorbis

} // namespace quavernet
