// The system's number and date forms, read from QLocale.
#pragma once

#include "platform/RegionalSettings.h"

#include <QLocale>

namespace quavernet {

RegionalSettings ReadRegionalSettings(const QLocale& locale = QLocale::system());

} // namespace quavernet
