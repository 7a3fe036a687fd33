// The player of a program that has none yet. The main window hands it to list and tree.
#pragma once

#include "app/PlayerWindow.h"
#include "platform/RuntimeError.h"

namespace quavernet {

/// No command can be carried out: each ends the way in which a player that can't be created does.
class NoPlayer : public PlayerWindow {
public:
    void Show() override { Fail(); }
    void BringToFront() override { Fail(); }
    void FillPlaylist() override { Fail(); }
    void FillPlaylistFromTree(std::int16_t, const TreeModel&) override { Fail(); }
    void FillPlaylistFromCharts(const RowTexts&, std::int32_t) override { Fail(); }
    void FillRandomPlaylist(const std::string&, std::int32_t) override { Fail(); }
    void fGetM3u(std::int16_t, const std::string&, bool) override { Fail(); }
    void ClearQueue() override { Fail(); }
    void SelectFirst() override { Fail(); }
    std::size_t QueueCount() const override { return 0; }
    void PlayFile(std::int16_t) override { Fail(); }
    void PlayFileFromTree(std::int16_t) override { Fail(); }
    void LoadStrings() override {}

private:
    [[noreturn]] static void Fail() {
        constexpr int CannotCreateObject = 429;
        throw RuntimeError(CannotCreateObject, "ActiveX component can't create object");
    }
};

} // namespace quavernet
