#include "adapters/mpv/MpvEngine.h"

#include "adapters/mpv/HushDevices.h"
#include "platform/RuntimeError.h"

#include <array>
#include <clocale>
#include <future>
#include <system_error>
#include <thread>

namespace quavernet::mpv {

namespace {

using Option = std::pair<const char*, const char*>;

constexpr std::array EngineOptions{
    // Sound alone, and nothing that belongs to a player with a window of its own.
    Option{"vid", "no"},
    Option{"sid", "no"},
    Option{"audio-display", "no"},
    Option{"terminal", "no"},
    Option{"osc", "no"},
    Option{"osd-level", "0"},
    Option{"input-default-bindings", "no"},
    Option{"input-builtin-bindings", "no"},
    Option{"input-media-keys", "no"},
    Option{"input-vo-keyboard", "no"},
    // Nothing of the user's settings of other players, no scripts, nothing beside the file itself.
    Option{"config", "no"},
    Option{"resume-playback", "no"},
    Option{"load-scripts", "no"},
    Option{"load-stats-overlay", "no"},
    Option{"load-osd-console", "no"},
    Option{"load-auto-profiles", "no"},
    Option{"ytdl", "no"},
    Option{"autoload-files", "no"},
    Option{"sub-auto", "no"},
    Option{"audio-file-auto", "no"},
    Option{"cover-art-auto", "no"},
    // What a file may be, by its contents and not by its name: music of three kinds. A list of addresses
    // is none, and nothing that a file names is opened.
    Option{"access-references", "no"},
    Option{"demuxer", "lavf"},
    Option{"demuxer-lavf-o", "protocol_whitelist=none,format_whitelist=[mp3,wav,ogg]"},
    // The bytes are on a disk already.
    Option{"cache", "no"},
    // Whatever a file holds, the device is opened in one of few ways: it has to be opened again, with a gap,
    // if
    // the next file wants another. The volume is exact in this format alone.
    Option{"audio-format", "float"},
    Option{"audio-channels", "stereo,5.1,7.1"},
    // From one file to the next without a gap.
    Option{"idle", "yes"},
    Option{"keep-open", "no"},
    Option{"gapless-audio", "weak"},
    Option{"prefetch-playlist", "yes"},
    Option{"hr-seek", "yes"},
    // The names in the sound server's list; silence where there is no device.
    Option{"audio-client-name", "Quavernet"},
    Option{"title", "Quavernet"},
    Option{"audio-fallback-to-null", "yes"},
};

[[noreturn]] void Fail(const std::string& what) {
    throw RuntimeError(ErrorNumber::DeviceInputOutput, what);
}

} // namespace

void WakeUp::Ring() {
    if (!m_ringing.exchange(true)) {
        m_post([weak = weak_from_this()] {
            if (const std::shared_ptr<WakeUp> self = weak.lock()) {
                self->m_ringing = false;
                self->m_heard();
            }
        });
    }
}

Engine::Engine(UserFiles& files, const MpvOptions& options, std::shared_ptr<WakeUp> wakeUp)
    : m_library(options.library), m_streams(std::make_shared<StreamTable>(files)),
      m_wakeUp(std::move(wakeUp)), m_endPatience(options.endPatience) {
    HushDevices();
    // The engine reads and writes numbers with a point, and refuses to begin under another rule.
    std::setlocale(LC_NUMERIC, "C");
    m_handle = m_library.create();
    if (m_handle == nullptr) {
        Fail("mpv_create");
    }
    SetOptions(options);
    if (const int code = m_library.initialize(m_handle); code < 0) {
        m_library.terminate_destroy(m_handle);
        Fail(ErrorText(code));
    }
    m_streams->Register(m_library, m_handle);
    m_library.observe_property(m_handle, 0, AudioOutput, MPV_FORMAT_STRING);
    m_library.observe_property(m_handle, 0, OutputRate, MPV_FORMAT_DOUBLE);
    m_library.set_wakeup_callback(
        m_handle, [](void* wake) { static_cast<WakeUp*>(wake)->Ring(); }, m_wakeUp.get());
}

Engine::~Engine() {
    m_library.set_wakeup_callback(m_handle, nullptr, nullptr);
    auto ended = std::make_shared<std::promise<void>>();
    const std::future<void> end = ended->get_future();
    try {
        std::thread([library = m_library, handle = m_handle, streams = m_streams, ended] {
            library.terminate_destroy(handle);
            ended->set_value();
        }).detach();
        end.wait_for(m_endPatience);
    } catch (const std::system_error&) {
        m_library.terminate_destroy(m_handle);
    }
}

void Engine::SetOptions(const MpvOptions& options) {
    for (const auto& [name, value] : EngineOptions) {
        const int code = m_library.set_option_string(m_handle, name, value);
        // An engine that was built without a piece doesn't know how to switch it off.
        if (code < 0 && code != MPV_ERROR_OPTION_NOT_FOUND) {
            m_library.terminate_destroy(m_handle);
            Fail(std::string(name) + "=" + value);
        }
    }
    for (const auto& [name, value] : options.engine) {
        if (m_library.set_option_string(m_handle, name.c_str(), value.c_str()) < 0) {
            m_library.terminate_destroy(m_handle);
            Fail(name + "=" + value);
        }
    }
}

void Engine::Command(const std::vector<std::string>& words, std::uint64_t number) {
    std::vector<const char*> pointers;
    for (const std::string& word : words) {
        pointers.push_back(word.c_str());
    }
    pointers.push_back(nullptr);
    m_library.command_async(m_handle, number, pointers.data());
}

void Engine::SetFlag(const char* property, bool value) {
    int flag = value ? 1 : 0;
    m_library.set_property_async(m_handle, 0, property, MPV_FORMAT_FLAG, &flag);
}

void Engine::SetNumber(const char* property, double value) {
    m_library.set_property_async(m_handle, 0, property, MPV_FORMAT_DOUBLE, &value);
}

void Engine::SetChoice(const char* property, const std::string& value) {
    const char* text = value.c_str();
    m_library.set_property_async(m_handle, 0, property, MPV_FORMAT_STRING, &text);
}

void Engine::AskNumber(const char* property, std::uint64_t number) {
    m_library.get_property_async(m_handle, number, property, MPV_FORMAT_DOUBLE);
}

const mpv_event& Engine::NextEvent(std::chrono::duration<double> patience) {
    return *m_library.wait_event(m_handle, patience.count());
}

} // namespace quavernet::mpv
