#include "browser/CopyPaths.h"

#include "adapters/qt/FileUris.h"
#include "adapters/qt/QtText.h"
#include "app/MainModule.h"
#include "platform/RuntimeError.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

#include <string>
#include <vector>

namespace quavernet {

void CopyPaths() {
    std::vector<std::string> paths;
    std::string lines;
    for (const std::int32_t row : mainModule.SelectedRows.Rows()) {
        IgnoreFailure([&] {
            paths.push_back(mainModule.FilePaths.Item(row));
            lines += (lines.empty() ? "" : "\n") + paths.back();
        });
    }
    if (paths.empty()) {
        return;
    }
    QMimeData* data = FilesToOffer(paths);
    data->setText(ToQString(lines));
    QGuiApplication::clipboard()->setMimeData(data);
}

} // namespace quavernet
