// The program's pictures by their keys. Every form asks here.
#pragma once

#include "adapters/qt/QtText.h"

#include <QIcon>
#include <QPixmap>

#include <string_view>

namespace quavernet {

inline QIcon Picture(std::string_view key) {
    return QIcon(QStringLiteral(":/icons/") + ToQString(key) + QStringLiteral(".svg"));
}

} // namespace quavernet
