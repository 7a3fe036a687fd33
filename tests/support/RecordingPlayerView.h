// What the player's window would show: the last text of each label, and a list that is kept up to date by
// what the queue tells alone.
#pragma once

#include "playback/PlayQueue.h"
#include "playback/PlayerView.h"

#include <cstddef>
#include <string>
#include <vector>

namespace quavernet::test {

class RecordingPlayerView : public PlayerView {
public:
    explicit RecordingPlayerView(std::vector<std::string>& calls) : m_calls(calls) {}

    void Show(const PlayQueue& queue) { m_queue = &queue; }

    bool IsMinimized() const override { return isMinimized; }
    void SetCaption(const std::string& text) override { Note("caption", caption, text); }
    void SetFile(const std::string& text, const std::string& tip) override {
        toolTip = tip;
        Note("file label", file, text);
    }
    void SetQuality(const std::string& text) override { Note("quality", quality, text); }
    void SetTime(const std::string& text) override { Note("time", time, text); }
    void SetLength(const std::string& text) override { Note("length", length, text); }
    void SetPercent(const std::string& text) override { Note("percent", percent, text); }
    void SetPositionMax(std::int32_t seconds) override {
        m_calls.push_back("max " + std::to_string(seconds));
        positionMax = seconds;
    }
    void SetPosition(std::int32_t seconds) override {
        m_calls.push_back("slider " + std::to_string(seconds));
        position = seconds;
    }
    void SetRepeat(bool one, bool all) override {
        repeat = one;
        repeatAll = all;
    }

    void EntriesReset() override {
        texts.clear();
        TakeFrom(0);
        selected = m_queue->ListIndex();
        pathsAtReset = m_queue->PathCount();
        ++resets;
    }
    void EntriesAppended(std::int32_t first) override {
        TakeFrom(first);
        ++appendings;
    }
    void EntryChanged(std::int32_t changed) override {
        texts.at(static_cast<std::size_t>(changed)) = m_queue->Text(changed);
        m_calls.push_back("text " + texts.at(static_cast<std::size_t>(changed)));
    }
    void EntryRemoved(std::int32_t removed) override { texts.erase(texts.begin() + removed); }
    void SelectionMoved() override {
        selected = m_queue->ListIndex();
        m_calls.push_back("select " + std::to_string(selected));
    }
    void StatusChanged() override { ++statusChanges; }

    bool isMinimized = false;
    std::string caption;
    std::string file;
    std::string toolTip;
    std::string quality;
    std::string time;
    std::string length;
    std::string percent;
    std::int32_t positionMax = 0;
    std::int32_t position = 0;
    bool repeat = false;
    bool repeatAll = false;
    std::vector<std::string> texts;
    std::int32_t selected = -1;
    int resets = 0;
    std::size_t pathsAtReset = 0; ///< When the list was emptied or arranged last.
    int appendings = 0;
    int statusChanges = 0;

private:
    void Note(const char* what, std::string& shown, const std::string& text) {
        m_calls.push_back(std::string(what) + " " + text);
        shown = text;
    }
    void TakeFrom(std::int32_t first) {
        texts.resize(static_cast<std::size_t>(first));
        for (std::int32_t i = first; i < m_queue->ListCount(); ++i) {
            texts.push_back(m_queue->Text(i));
        }
    }

    std::vector<std::string>& m_calls;
    const PlayQueue* m_queue = nullptr;
};

} // namespace quavernet::test
