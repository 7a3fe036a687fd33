#include "adapters/qt/FileUris.h"

#include <utility>

#include <QByteArray>
#include <QMimeData>
#include <QSysInfo>

namespace quavernet {

namespace {

const QString UriList = QStringLiteral("text/uri-list");

// Some programs name the machine that their files are on, as the standard has it.
bool IsThisMachine(const QByteArray& host) {
    return host.isEmpty() || host.compare("localhost", Qt::CaseInsensitive) == 0 ||
           host.compare(QSysInfo::machineHostName().toUtf8(), Qt::CaseInsensitive) == 0;
}

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
            if (path < 0 || !IsThisMachine(host)) {
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
