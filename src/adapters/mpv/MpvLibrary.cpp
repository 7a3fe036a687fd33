#include "adapters/mpv/MpvLibrary.h"

#include "adapters/mpv/LoadedPages.h"
#include "platform/RuntimeError.h"

#include <system_error>
#include <thread>

#include <dlfcn.h>

namespace quavernet::mpv {

namespace {

// Lazy: to bind all functions of all its libraries at once would take twice as long.
constexpr int HowToLoad = RTLD_LAZY | RTLD_LOCAL;

// Null if it can't be loaded.
void Load(const std::string& name, void*& library) {
    const LoadedObjects before = ObjectsInMemory();
    library = ::dlopen(name.c_str(), HowToLoad);
    GiveBackPages(before);
}

[[noreturn]] void FailToLoad(const std::string& name) {
    const char* reason = ::dlerror();
    throw RuntimeError(ErrorNumber::FileNotFound, reason == nullptr ? name : reason);
}

template <typename Function> void Find(void* library, const char* name, Function& function) {
    function = reinterpret_cast<Function>(::dlsym(library, name));
    if (function == nullptr) {
        FailToLoad(name);
    }
}

} // namespace

Library::Library(const std::string& name) {
    void* library = nullptr;
    Load(name, library);
    if (library == nullptr) {
        FailToLoad(name);
    }
    Find(library, "mpv_create", create);
    Find(library, "mpv_initialize", initialize);
    Find(library, "mpv_terminate_destroy", terminate_destroy);
    Find(library, "mpv_set_option_string", set_option_string);
    Find(library, "mpv_command_async", command_async);
    Find(library, "mpv_set_property_async", set_property_async);
    Find(library, "mpv_get_property_async", get_property_async);
    Find(library, "mpv_observe_property", observe_property);
    Find(library, "mpv_set_wakeup_callback", set_wakeup_callback);
    Find(library, "mpv_wait_event", wait_event);
    Find(library, "mpv_error_string", error_string);
    Find(library, "mpv_stream_cb_add_ro", stream_cb_add_ro);
}

void Library::LoadAhead(const std::string& name) {
    try {
        std::thread([name] {
            void* staysLoaded = nullptr;
            Load(name, staysLoaded);
        }).detach();
    } catch (const std::system_error&) {
        // No thread to be had: the first file loads it.
    }
}

} // namespace quavernet::mpv
