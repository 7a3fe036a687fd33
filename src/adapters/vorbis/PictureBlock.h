// The cover picture inside a comment (key METADATA_BLOCK_PICTURE, FLAC picture structure in base64), as lines
// of the tool. Called by CommentLines. Ours and not TagLib's, whose base64 gives nothing for a text that goes
// on after a padded group, while the tool describes the picture before it: the lines have to be the tool's.
#pragma once

#include <string>
#include <string_view>

namespace quavernet::vorbis {

/// Appends the lines that describe the picture; one line "<corrupted>" if it can't be read.
void AppendPicture(std::string_view base64, std::string& lines);

} // namespace quavernet::vorbis
