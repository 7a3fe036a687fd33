// What the first bytes of a picture's file tell before a decoder is let at it: its format, and what a JPEG
// would cost. The reader of cover pictures asks here.
#pragma once

#include <cstdint>

namespace quavernet {

class BinaryFile;

/// The formats of cover pictures.
enum class PictureFormat : std::uint8_t { None, Bmp, Gif, Jpeg, Png, WebP };

/// By the file's first bytes; its name says nothing. Throws RuntimeError 57 if the device fails.
PictureFormat FormatOfPicture(const BinaryFile& file);

/// Bytes of coefficients that a decoder has to hold of a JPEG that comes in several scans (a progressive one
/// above all), at whatever size the picture is wanted. 0 for one that is decoded line by line, and for a file
/// that no decoder would take; the greatest number for one with too many segments or scans for any camera or
/// program to have written it. Throws RuntimeError 57 if the device fails.
std::uint64_t JpegCoefficientBytes(const BinaryFile& file);

/// Whether a PNG holds more beside its pixels than any program writes: a decoder unpacks all its texts and
/// profiles, in front of the pixels and after them, and keeps them. Throws RuntimeError 57 if the device
/// fails.
bool HasOversizedTexts(const BinaryFile& file);

} // namespace quavernet
