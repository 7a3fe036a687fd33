#include "app/LoadResString.h"
#include "app/MainModule.h"

namespace quavernet {

std::string GetSpecialFolderPath(int id) {
    const auto path = services.shell->SpecialFolder(id);
    if (!path) {
        return LoadResString(416);
    }
    return path->substr(0, path->find('\0'));
}

} // namespace quavernet
