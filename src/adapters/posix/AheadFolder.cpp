#include "adapters/posix/AheadFolder.h"

#include "platform/Paths.h"

#include <utility>

namespace quavernet::posix {

namespace {

Want WantOf(Ahead wanted) {
    switch (wanted) {
    case Ahead::Nothing:
        return Want::Nothing;
    case Ahead::Facts:
        return Want::Facts;
    case Ahead::Unsure:
        return Want::Unsure;
    case Ahead::Contents:
        break;
    }
    return Want::Contents;
}

} // namespace

AheadFile::AheadFile(std::string nameOrPath, Ahead wanted)
    : name(std::move(nameOrPath)), want(WantOf(wanted)) {}

std::string AheadFolder::PathOf(const AheadFile& file) const {
    return path.empty() ? file.name : WithFinalSlash(path) + file.name;
}

std::string_view AheadFolder::NameOf(std::string_view filePath) const {
    if (path.empty()) {
        return filePath;
    }
    const std::size_t slash = path.size() - (path.ends_with('/') ? 1 : 0);
    const bool isIn = filePath.size() > slash && filePath[slash] == '/' && filePath.starts_with(path) &&
                      filePath.find('/', slash + 1) == std::string_view::npos;
    return isIn ? filePath.substr(slash + 1) : std::string_view();
}

} // namespace quavernet::posix
