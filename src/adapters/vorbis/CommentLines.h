// One comment of a Vorbis stream as the tool prints it: the comment itself, or the warning that is in its
// place. Warnings matter because they carry the comment's text, which the parser of the output reads too.
// Called by OggInfoReader.
#pragma once

#include <string>
#include <string_view>

namespace quavernet::vorbis {

/// Appends the lines of the comment with the number `index` (from 0) of the stream `stream` (from 1).
void AppendComment(std::string_view comment, std::size_t index, std::size_t stream, std::string& lines);

} // namespace quavernet::vorbis
