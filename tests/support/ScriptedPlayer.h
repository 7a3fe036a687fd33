// A media engine that follows a script: a test says how long files are and which can't be played, lets them
// end, and reads the calls.
#pragma once

#include "platform/MediaPlayer.h"
#include "platform/RuntimeError.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace quavernet::test {

class ScriptedPlayer : public MediaPlayer {
public:
    explicit ScriptedPlayer(std::vector<std::string>& calls) : m_calls(calls) {}

    void SetEvents(MediaPlayerEvents* events) override { m_events = events; }

    void SetFileName(const std::string& path) override {
        const bool goesOn = !m_begun.empty() && m_begun == path;
        m_calls.push_back((goesOn ? "goes on with " : "file ") + path);
        m_begun.clear();
        m_next.clear();
        m_file.clear();
        m_position = NotReady;
        m_isPlaying = false;
        if (refused.contains(path)) {
            throw RuntimeError(ErrorNumber::FileNotFound, "refused: " + path);
        }
        m_file = path;
        m_isPlaying = goesOn;
        m_position = late.contains(path) ? NotReady : 0;
    }
    std::string FileName() const override { return m_file; }

    void SetNextFile(const std::string& path) override {
        m_calls.push_back("next " + path);
        m_next = path;
    }

    void Play() override {
        m_calls.emplace_back("Play");
        FailIfTold("Play");
        m_isPlaying = !m_file.empty();
    }
    void Pause() override {
        m_calls.emplace_back("Pause");
        FailIfTold("Pause");
        m_isPlaying = false;
    }
    void Stop() override {
        m_calls.emplace_back("Stop");
        FailIfTold("Stop");
        m_isPlaying = false;
    }
    bool IsPlaying() const override { return m_isPlaying; }

    double Duration() const override {
        const auto found = durations.find(m_file);
        return m_file.empty() || late.contains(m_file) ? NotReady
               : found == durations.end()              ? 60
                                                       : found->second;
    }
    double CurrentPosition() const override { return m_position; }
    void SetCurrentPosition(double seconds) override {
        m_calls.push_back("position " + std::to_string(static_cast<int>(seconds)));
        m_position = m_file.empty() ? NotReady : seconds;
    }

    std::int32_t Volume() const override { return m_volume; }
    void SetVolume(std::int32_t volume) override {
        m_calls.push_back("volume " + std::to_string(volume));
        m_volume = volume;
    }
    std::string SilenceReason() const override { return {}; }

    /// The file has come to its end: the next one begins by itself if it was told, and then the event comes.
    void End() {
        GoOn();
        TellEnd();
    }
    void GoOn() {
        m_begun = std::exchange(m_next, {});
        m_isPlaying = !m_begun.empty();
    }
    void TellEnd() {
        if (m_events != nullptr) {
            m_events->EndOfStream();
        }
    }
    /// A file of `late` is there now.
    void ArriveLate() {
        late.erase(m_file);
        m_position = 0;
        if (m_events != nullptr) {
            m_events->LoadedLate();
        }
    }
    /// The file turns out to be none.
    void RefuseLate() {
        m_isPlaying = false;
        m_position = NotReady;
        if (m_events != nullptr) {
            m_events->RefusedLate();
        }
    }
    void ChangePlaying() {
        if (m_events != nullptr) {
            m_events->PlayingChanged();
        }
    }

    void SetPosition(double seconds) { m_position = seconds; } ///< As time goes by.
    const std::string& Next() const { return m_next; }
    bool HasListener() const { return m_events != nullptr; }

    std::set<std::string> refused;           ///< Files that can't be played.
    std::set<std::string> late;              ///< Files that take their time.
    std::map<std::string, double> durations; ///< Seconds; 60 for others.
    std::string failing;                     ///< Name of a call that fails: "Play", "Pause" or "Stop".

private:
    void FailIfTold(const char* call) const {
        if (failing == call) {
            throw RuntimeError(ErrorNumber::InvalidProcedureCall, call);
        }
    }

    std::vector<std::string>& m_calls;
    MediaPlayerEvents* m_events = nullptr;
    std::string m_file;
    std::string m_next;
    std::string m_begun; ///< What it has begun by itself.
    bool m_isPlaying = false;
    double m_position = NotReady;
    std::int32_t m_volume = FullVolume;
};

} // namespace quavernet::test
