#include "widgets/ToldPlaces.h"

#include <QGuiApplication>

namespace quavernet {

bool PlacesAreTold() {
    return !QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace quavernet
