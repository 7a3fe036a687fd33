// Lists of local files as drag and drop carries them (text/uri-list). Used by the forms that take or give
// files.
#pragma once

#include <string>
#include <vector>

class QMimeData;

namespace quavernet {

/// Paths of the local files in the data, in their order; entries of other machines and protocols are left
/// out. Paths are the bytes of the file system, whatever they encode.
std::vector<std::string> LocalFiles(const QMimeData& data);

/// Data that offers the files. The caller owns it.
QMimeData* FilesToOffer(const std::vector<std::string>& paths);

} // namespace quavernet
