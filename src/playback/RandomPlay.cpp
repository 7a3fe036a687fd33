#include "playback/RandomPlay.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/PlayerWindow.h"
#include "app/TextNumbers.h"
#include "playback/RandomBetween.h"
#include "playback/RandomPlaySettings.h"
#include "playback/RandomPlaylist.h"
#include "playback/ShownWork.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace quavernet {

namespace {

/// The first and the last id of the library; both 0 if it is empty.
struct IdRange {
    std::int32_t First = 0;
    std::int32_t Last = 0;
};

IdRange FindIdRange() {
    ADODB::Recordset files;
    files.Open("Select File_id from Files Order By File_id", *mainModule.Connection);
    IdRange range;
    if (!files.Eof()) {
        range.First = Narrow32(files.Fields(0).Number());
        files.MoveLast();
        range.Last = Narrow32(files.Fields(0).Number());
    }
    files.Close();
    return range;
}

// A draw is a number of single precision: its text has seven digits at most.
std::string Draw(const IdRange& range) {
    std::array<char, 32> text{};
    const float draw = RandomBetween(range.First, range.Last, true, true);
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), draw, std::chars_format::general, 7);
    std::string number(text.data(), end.ptr);
    std::replace(number.begin(), number.end(), 'e', 'E');
    return number;
}

void PlayDraws(const IdRange& range, PlayerWindow& player) {
    player.Show();
    player.ClearQueue();
    mainModule.RandomCount = std::min(mainModule.RandomCount, MostRandomFiles);
    const std::int32_t count = mainModule.RandomCount;
    for (std::int32_t i = 1; i <= count; ++i) {
        player.FillRandomPlaylist(Draw(range), i); // An id without a file adds nothing.
    }
    player.SelectFirst();
    player.PlayFile(1);
}

// Every place of the list is drawn until a file is there. Where hardly any id has one, that would not end.
void Fill(PlaylistWriter& playlist, const IdRange& range) {
    constexpr int MostVainDraws = 1000; // In a row.
    int vainDraws = 0;
    for (std::int32_t left = mainModule.RandomCount; left > 0 && vainDraws < MostVainDraws;) {
        if (AddRandomFile(playlist, Draw(range))) {
            vainDraws = 0;
            --left;
        } else {
            ++vainDraws;
        }
    }
}

} // namespace

void cmdRandomize_Click(PlayerWindow& player, LongWork& work) {
    const ShownHourglass hourglass(work);
    const ShownPanelText panel(work, LoadResString(Texts::WritingRandomList));
    mainModule.RandomNumbers.Randomize();
    const IdRange range = FindIdRange();
    if (range.First == 0 && range.Last == 0) {
        return;
    }
    SetRandomCount();
    if (mainModule.UseExternalPlayer) {
        PlayRandomPlaylist([&](PlaylistWriter& playlist) { Fill(playlist, range); });
    } else {
        PlayDraws(range, player);
    }
}

} // namespace quavernet
