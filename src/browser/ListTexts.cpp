#include "browser/ListQuery.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"
#include "platform/RegionalSettings.h"

namespace quavernet {

namespace {

// The numeric value decides, not the text.
bool IsOne(const std::string& count) {
    return Val(count) == 1;
}

} // namespace

std::string FileCountText(std::size_t listed, double totalMegabytes) {
    return std::to_string(listed) + LoadResString(listed == 1 ? 585 : 584) +
           FormatNumber(totalMegabytes, 2, services.regional) + " MB)";
}

std::string InterpretCountText(const std::string& count) {
    return count + LoadResString(IsOne(count) ? 587 : 586);
}

std::string TitleCountText(const std::string& count) {
    return count + LoadResString(588);
}

std::string AlbumCountText(const std::string& count) {
    return count + LoadResString(IsOne(count) ? 590 : 589);
}

} // namespace quavernet
