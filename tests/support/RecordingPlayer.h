// A player window that writes down what is asked of it.
#pragma once

#include "app/PlayerWindow.h"
#include "platform/RuntimeError.h"

#include <string>
#include <vector>

namespace quavernet::test {

class RecordingPlayer : public PlayerWindow {
public:
    explicit RecordingPlayer(std::vector<std::string>& calls) : m_calls(calls) {}

    void Show() override { m_calls.push_back("Show"); }
    void BringToFront() override { m_calls.push_back("BringToFront"); }
    void FillPlaylist() override {
        m_calls.push_back("FillPlaylist");
        if (fillFails) {
            throw RuntimeError(1, "queue");
        }
    }
    void FillPlaylistFromTree(std::int16_t mode, const TreeModel&) override {
        m_calls.push_back("FillPlaylistFromTree " + std::to_string(mode));
        if (fillFails) {
            throw RuntimeError(1, "queue");
        }
    }
    void FillPlaylistFromCharts(const RowTexts&, std::int32_t row) override {
        m_calls.push_back("FillPlaylistFromCharts " + std::to_string(row));
    }
    void FillRandomPlaylist(const std::string& fileId, std::int32_t counter) override {
        m_calls.push_back("FillRandomPlaylist " + fileId + " " + std::to_string(counter));
    }
    void fGetM3u(std::int16_t mode, const std::string& fileName, bool checkExists) override {
        m_calls.push_back("fGetM3u " + std::to_string(mode) + " " + fileName +
                          (checkExists ? " checked" : ""));
    }
    void ClearQueue() override { m_calls.push_back("ClearQueue"); }
    void SelectFirst() override { m_calls.push_back("SelectFirst"); }
    std::size_t QueueCount() const override { return queueCount; }
    void PlayFile(std::int16_t index) override { m_calls.push_back("PlayFile " + std::to_string(index)); }
    void PlayFileFromTree(std::int16_t index) override {
        m_calls.push_back("PlayFileFromTree " + std::to_string(index));
    }

    void LoadStrings() override { m_calls.push_back("LoadStrings"); }

    std::size_t queueCount = 1;
    bool fillFails = false;

private:
    std::vector<std::string>& m_calls;
};

} // namespace quavernet::test
