// Notes and the progress on the task bar, told over the session bus: "org.freedesktop.Notifications", and
// "com.canonical.Unity.LauncherEntry", which docks and task bars of several desktops listen to. Made by
// RealServices.
#pragma once

#include "platform/Desktop.h"

#include <memory>
#include <string>

namespace quavernet {

/// Connects in the background at the first call; where there is no bus, no call costs anything. `busAddress`
/// empty: the bus of the session.
std::unique_ptr<Desktop> CreateBusDesktop(const std::string& busAddress = {});

} // namespace quavernet
