// Whether a window can know where on the screen it is. Whoever stores a window's place asks.
#pragma once

namespace quavernet {

/// False under Wayland, where the desktop places windows and tells nobody: what the toolkit gives for such a
/// place is made up, and a place that was stored elsewhere must not be lost to it.
bool PlacesAreTold();

} // namespace quavernet
