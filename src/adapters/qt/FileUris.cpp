#include "adapters/qt/FileUris.h"

#include <utility>

#include <QByteArray>
#include <QMimeData>

namespace quavernet {

namespace {

const QString UriList = QStringLiteral("text/uri-list");

} // namespace

std::vector<std::string> LocalFiles(const QMimeData& data) {
    std::vector<std::string> paths;
    // Read by hand: a URL class takes every path for UTF-8.
    for (QByteArray line : data.data(UriList).split('\n')) {
        line = line.trimmed();
        if (!line.startsWith("file:")) {
            continue;
        }
        line.remove(0, 5);
        if (line.startsWith("//")) {
            const qsizetype path = line.indexOf('/', 2);
            const QByteArray host = line.mid(2, path - 2);
            if (path < 0 || (!host.isEmpty() && host != "localhost")) {
                continue;
            }
            line.remove(0, path);
        }
        std::string path = QByteArray::fromPercentEncoding(line).toStdString();
        // The system would cut a path at a NUL and open another file.
        if (line.startsWith('/') && path.find('\0') == std::string::npos) {
            paths.push_back(std::move(path));
        }
    }
    return paths;
}

QMimeData* FilesToOffer(const std::vector<std::string>& paths) {
    QByteArray list;
    for (const std::string& path : paths) {
        list += "file://" + QByteArray::fromStdString(path).toPercentEncoding("/") + "\r\n";
    }
    auto* data = new QMimeData;
    data->setData(UriList, list);
    return data;
}

} // namespace quavernet
