// The engine's library, which is loaded when it is first needed: linked to the program it would make every
// start slower by 50 ms. Used by the files of this folder.
#pragma once

#include <mpv/client.h>
#include <mpv/stream_cb.h>

#include <string>

namespace quavernet::mpv {

/// The functions of libmpv that the adapter calls, under their own names. The library stays loaded to the
/// end of the process: its two hundred files and their threads do not part without harm.
class Library {
public:
    static constexpr const char* DefaultName = "libmpv.so.2";

    /// Loads it, or finds it loaded. Throws RuntimeError 53 if it isn't installed or lacks a function.
    explicit Library(const std::string& name);

    /// Begins to load it in the background: it takes 80 ms, in which a window can be made.
    static void LoadAhead(const std::string& name);

    decltype(&mpv_create) create = nullptr;
    decltype(&mpv_initialize) initialize = nullptr;
    decltype(&mpv_terminate_destroy) terminate_destroy = nullptr;
    decltype(&mpv_set_option_string) set_option_string = nullptr;
    decltype(&mpv_command_async) command_async = nullptr;
    decltype(&mpv_set_property_async) set_property_async = nullptr;
    decltype(&mpv_get_property_async) get_property_async = nullptr;
    decltype(&mpv_observe_property) observe_property = nullptr;
    decltype(&mpv_set_wakeup_callback) set_wakeup_callback = nullptr;
    decltype(&mpv_wait_event) wait_event = nullptr;
    decltype(&mpv_error_string) error_string = nullptr;
    decltype(&mpv_stream_cb_add_ro) stream_cb_add_ro = nullptr;
};

} // namespace quavernet::mpv
