#include "playback/AskForPlaylist.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"

namespace quavernet {

std::optional<std::string> AskForPlaylist() {
    std::optional<std::string> path;
    IgnoreFailure([&] {
        path = services.dialogs->ShowSave(LoadResString(Texts::PlaylistFilter),
                                          GetSpecialFolderPath(Shell::DocumentsFolder));
    });
    return path;
}

} // namespace quavernet
