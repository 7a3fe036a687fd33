#include "scanner/SkippedLine.h"

#include "app/LoadResString.h"

namespace quavernet {

namespace {

std::string ReasonText(const SkippedEntry& entry) {
    switch (entry.kind) {
    case SkippedEntry::Kind::NoAccess:
        return LoadResString(751);
    case SkippedEntry::Kind::Missing:
        return LoadResString(752);
    case SkippedEntry::Kind::LinkCircle:
        return LoadResString(753);
    case SkippedEntry::Kind::NoPlainFile:
        return LoadResString(754);
    case SkippedEntry::Kind::NoBitRate:
        return LoadResString(777);
    case SkippedEntry::Kind::Unreadable:
        break;
    }
    return LoadResString(755) + entry.reason;
}

} // namespace

std::string SkippedLine(const SkippedEntry& entry) {
    return LoadResString(750) + entry.path + " (" + ReasonText(entry) + ")";
}

} // namespace quavernet
