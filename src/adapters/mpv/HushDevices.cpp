#include "adapters/mpv/HushDevices.h"

#include <cstdlib>
#include <initializer_list>

#include <dlfcn.h>

namespace quavernet::mpv {

namespace {

// As in alsa/error.h: snd_lib_error_handler_t and snd_lib_error_set_handler.
using AlsaHandler = void (*)(const char* file, int line, const char* function, int error, const char* format,
                             ...);
using SetAlsaHandler = int (*)(AlsaHandler handler);

// As in pipewire/log.h: pw_log_set_level.
using SetPipeWireLevel = void (*)(int level);
constexpr int NoMessages = 0; // SPA_LOG_LEVEL_NONE

// As in jack/jack.h: jack_set_error_function and jack_set_info_function.
using SetJackHandler = void (*)(void (*handler)(const char* message));

void Ignore(const char*, int, const char*, int, const char*, ...) {}

void IgnoreMessage(const char*) {}

/// The function of a library that is loaded already; null if it is not.
template <typename Function> Function Loaded(const char* library, const char* name) {
    void* handle = ::dlopen(library, RTLD_LAZY | RTLD_NOLOAD);
    if (handle == nullptr) {
        return nullptr;
    }
    const auto function = reinterpret_cast<Function>(::dlsym(handle, name));
    ::dlclose(handle); // Its owner keeps it loaded.
    return function;
}

} // namespace

void HushDevices() {
    if (const auto set = Loaded<SetAlsaHandler>("libasound.so.2", "snd_lib_error_set_handler")) {
        set(Ignore);
    }
    for (const char* name : {"jack_set_error_function", "jack_set_info_function"}) {
        if (const auto set = Loaded<SetJackHandler>("libjack.so.0", name)) {
            set(IgnoreMessage);
        }
    }
    const auto set = Loaded<SetPipeWireLevel>("libpipewire-0.3.so.0", "pw_log_set_level");
    if (set != nullptr && std::getenv("PIPEWIRE_DEBUG") == nullptr) {
        set(NoMessages);
    }
}

} // namespace quavernet::mpv
