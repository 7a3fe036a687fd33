// Parts of paths: bytes, separated by "/". Called wherever a path is taken apart or put together; nothing
// here asks the file system.
#pragma once

#include <string>
#include <string_view>

namespace quavernet {

/// The part after the last "/"; the whole text if there is none.
inline std::string FileNameFromPath(std::string_view path) {
    return std::string(path.substr(path.rfind('/') + 1));
}

/// The part before the last "/", "/" for what is directly below it; empty if there is none.
inline std::string FolderFromPath(std::string_view path) {
    const auto slash = path.rfind('/');
    return slash == 0 ? "/" : std::string(path.substr(0, slash == std::string_view::npos ? 0 : slash));
}

/// The path with a "/" at its end; "/" for an empty one.
inline std::string WithFinalSlash(std::string path) {
    if (!path.ends_with('/')) {
        path += '/';
    }
    return path;
}

} // namespace quavernet
