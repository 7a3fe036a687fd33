// What a maker of the media engine's adapter may choose. RealServices takes it as it is; tests and
// benchmarks send the sound into a file or nowhere.
#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace quavernet {

/// Brings a function to the message loop, from any thread, and returns at once.
using PostToLoop = std::function<void(std::function<void()>)>;

struct MpvOptions {
    /// The shared library, by name or by path.
    std::string library = "libmpv.so.2";

    /// How long SetFileName waits for a file. The window has to answer within 100 ms whatever the file does;
    /// a file on a disk is there after 5, the first one after 30.
    std::chrono::milliseconds patience{80};

    /// How long the end of the player waits for the engine's, which may hang with a sound device.
    std::chrono::milliseconds endPatience{60};

    /// Options of the engine by name, set after the adapter's own.
    std::vector<std::pair<std::string, std::string>> engine;
};

} // namespace quavernet
