// Reads any bytes as the list of files that another program drops on the window, and offers the paths that
// come out to a program again.
#include "adapters/qt/FileUris.h"

#include "FuzzInput.h"

#include <memory>
#include <string>
#include <vector>

#include <QMimeData>

namespace {

using namespace quavernet;
using fuzz::Require;

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view list = fuzz::TextOf(data, size);
    QMimeData dropped;
    dropped.setData(QStringLiteral("text/uri-list"),
                    QByteArray(list.data(), static_cast<qsizetype>(list.size())));
    const std::vector<std::string> paths = LocalFiles(dropped);
    for (const std::string& path : paths) {
        // A path from the root, and one that the system takes for the same as we do.
        Require(path.starts_with('/') && path.find('\0') == std::string::npos);
    }
    const std::unique_ptr<QMimeData> offered(FilesToOffer(paths));
    Require(LocalFiles(*offered) == paths);
    return 0;
}
