#include "app/MainModule.h"

#include <cstdlib>

#include "app/LoadResString.h"

namespace quavernet {

MainModule mainModule;
Services services;

void ExitProgram() {
    mainModule.Connection.reset();
    mainModule.FilePaths.Clear();
    mainModule.FileNames.Clear();
    mainModule.SelectedRows.Clear();
    mainModule.TreeNodeData.Clear();
    mainModule.TagComponent.reset();
    services.shell->EndProcess(0);
    std::abort(); // Not reached: the process has ended.
}

std::string GetSpecialFolderPath(int id) {
    const auto path = services.shell->SpecialFolder(id);
    if (!path) {
        return LoadResString(416);
    }
    return path->substr(0, path->find('\0'));
}

bool GetIEVersion(std::int32_t& major, std::int32_t& minor, std::int32_t& build) {
    return services.shell->DllGetVersion(major, minor, build);
}

} // namespace quavernet
