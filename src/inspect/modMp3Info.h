// Turns one audio file into a record (app/CurrentFile.h): tags, stream facts, play time. Called by the
// scanner, the drop handlers, the details dialog and the player, each with a record of its own.
#pragma once

#include "app/CurrentFile.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace quavernet {

/// The whole inspection of one file. Never fails for an unreadable body. Lets events run: no handler inside
/// them may touch `file`.
void InspectFile(const std::string& path, CurrentFile& file);

/// Fills AudioInfo from the first frame header or the wave header; fields that can't be won stay cleared.
/// Lets events run: at the start, and before an MPEG header is looked at.
void ReadAudioInfo(const std::string& path, CurrentFile& file);

/// The 32-character bit string of the first frame header, or an empty text. Sets IsVbr and VbrFrames.
std::string ReadMpegHeader(const std::string& path, CurrentFile& file);

/// Sets the tag kind flags and fills Id3v1Tag from the version 2 tag, else the version 1 tag, else the file
/// name.
void ReadTags(const std::string& path, CurrentFile& file);

/// Title and performer from CurrentFileName (from DetailsPath if that is empty); genre NoGenre.
void TagsFromFileName(CurrentFile& file);

/// Writes the version 1 record. Failures are shown in a message box. The mark is written over the last 128
/// bytes of a file without a tag: a file never grows.
void WriteId3v1(const std::string& path, const Id3v1Tag& tag);

/// 1: version 1 tag found, 2: version 2 tag found, 3: no tag; any other value leaves the flags as they are.
void SetTagKind(int kind, CurrentFile& file);

/// The text without "(" and ")".
std::string CleanGenreText(std::string_view text);

/// The text without its NULs.
std::string RemoveNulls(std::string_view text);

} // namespace quavernet
