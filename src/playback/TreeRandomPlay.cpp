#include "playback/TreeRandomPlay.h"

#include "app/LongWork.h"
#include "app/MainModule.h"
#include "app/PlayerWindow.h"
#include "library/SqlQuote.h"
#include "playback/RandomPlaylist.h"
#include "playback/ShuffledOrder.h"
#include "tree/NodeKey.h"
#include "tree/TreeModel.h"

#include <cstdint>
#include <string>
#include <vector>

namespace quavernet {

namespace {

std::vector<std::string> EntriesOf(const std::string& category) {
    ADODB::Recordset entries;
    // An apostrophe in the name fails: the statement takes it as it is.
    entries.Open("Select File_id from FileCategories where Parent = '" + std::string(SqlPlain(category)) +
                     "'",
                 *mainModule.Connection);
    std::vector<std::string> ids;
    for (; !entries.Eof(); entries.MoveNext()) {
        ids.push_back(entries.Fields(0).Text());
    }
    entries.Close();
    return ids;
}

std::vector<std::string> Shuffled(const std::vector<std::string>& source) {
    mainModule.RandomCount = Narrow32(static_cast<double>(source.size()));
    mainModule.RandomNumbers.Randomize();
    std::vector<std::string> result;
    result.reserve(source.size());
    for (const std::int32_t position : ShuffledOrder(mainModule.RandomCount)) {
        result.push_back(source[static_cast<std::size_t>(position)]);
    }
    return result;
}

void PlayEntries(const std::vector<std::string>& ids, PlayerWindow& player) {
    player.Show();
    player.ClearQueue();
    std::int32_t counter = 0;
    for (const std::string& id : ids) {
        player.FillRandomPlaylist(id, ++counter);
    }
    player.PlayFile(1);
}

} // namespace

void TreeRandomPlay(const TreeModel& tree, PlayerWindow& player, LongWork& work) {
    if (!tree.HasSelection()) {
        return;
    }
    const std::vector<std::string> ids = Shuffled(EntriesOf(CategoryFromKey(tree.SelectedItem().Key)));
    if (!mainModule.UseExternalPlayer) {
        PlayEntries(ids, player);
        work.SetPanel(Panel::Scanning, {});
        return;
    }
    PlayRandomPlaylist([&](PlaylistWriter& playlist) {
        for (const std::string& id : ids) {
            AddRandomFile(playlist, id); // An entry whose file is gone is left out.
        }
    });
    work.SetMousePointer(MousePointer::Default);
    work.SetPanel(Panel::Scanning, {});
}

} // namespace quavernet
