// The names by which notes are sent and clicked on the bus. Used by the files of this folder.
#pragma once

namespace quavernet::notes {

inline constexpr const char* Service = "org.freedesktop.Notifications"; ///< Its interface has the same name.
inline constexpr const char* Path = "/org/freedesktop/Notifications";
inline constexpr const char* Notify = "Notify";
inline constexpr const char* ActionInvoked = "ActionInvoked";
inline constexpr const char* ActivationToken = "ActivationToken";
inline constexpr const char* ClickOnTheNote = "default"; ///< The action that needs no button.

} // namespace quavernet::notes
