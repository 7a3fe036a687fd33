#include "app/MainModule.h"

#include <cstdlib>

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

bool GetIEVersion(std::int32_t& major, std::int32_t& minor, std::int32_t& build) {
    return services.shell->DllGetVersion(major, minor, build);
}

} // namespace quavernet
