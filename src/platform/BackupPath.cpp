#include "platform/BackupPath.h"

#include <filesystem>

namespace quavernet {

std::string BackupPath(const std::string& library, int number) {
    std::filesystem::path path(library);
    const std::string extension = path.extension().string();
    path.replace_extension(".backup" + std::to_string(number) + extension);
    return path.string();
}

} // namespace quavernet
