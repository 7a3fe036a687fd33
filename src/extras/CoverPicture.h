// Reads the picture of a cover at the size in which it is shown. The boxes of frmCovers call it.
#pragma once

#include <QImage>
#include <QSize>

#include <string>

namespace quavernet {

/// The picture in the file (BMP, GIF, JPEG, PNG, and WebP where the toolkit's reader is installed), stretched
/// to `size` pixels; a null image if it can't be shown, for whatever reason. Large pictures are never held
/// whole where their format allows it, and otherwise refused above 128 MiB, as are files above
/// that and pictures of more than 200 million pixels, which would take seconds. Never fails.
QImage ReadCoverPicture(const std::string& path, const QSize& size);

} // namespace quavernet
