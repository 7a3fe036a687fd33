#include "adapters/posix/SafeSave.h"

#include "adapters/posix/FileTraits.h"
#include "adapters/posix/TemporaryCopy.h"
#include "platform/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::posix {

namespace {

constexpr std::size_t CopyBlock = std::size_t{1} << 20;
constexpr std::uint64_t PageSize = 4096; // The smallest of any system; larger ones are made of whole ones.

struct stat FactsOf(const OpenedFile& file) {
    struct stat facts {};
    Check(::fstat(file.Number(), &facts) == 0 ? 0 : errno, file.Path());
    return facts;
}

void SetTimes(int descriptor, const struct stat& facts) {
    const struct timespec times[2] = {facts.st_atim, facts.st_mtim};
    ::futimens(descriptor, times); // A file system without times has none to keep.
}

void AppendRange(TemporaryCopy& copy, const OpenedFile& file, std::uint64_t begin, std::uint64_t end) {
    std::vector<std::byte> block(static_cast<std::size_t>(std::min<std::uint64_t>(CopyBlock, end - begin)));
    while (begin < end) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(block.size(), end - begin));
        const std::size_t count = file.ReadAt(begin, std::span(block).first(wanted));
        Check(count > 0 ? 0 : EIO, file.Path()); // The file was cut while it was copied.
        Check(copy.Append(std::span(block).first(count)), file.Path());
        begin += count;
    }
}

bool LeadsTo(const std::string& path, const struct stat& facts) {
    struct stat there {};
    const Descriptor opened = OpenPath(path, O_PATH);
    return opened.IsOpen() && ::fstat(opened.Get(), &there) == 0 && there.st_dev == facts.st_dev &&
           there.st_ino == facts.st_ino;
}

// Nobody else's changes may be lost with the old file.
void CheckUnchanged(const OpenedFile& file) {
    if (!file.IsAsOpened() || !LeadsTo(file.Path(), FactsOf(file))) {
        throw RuntimeError(ErrorNumber::PermissionDenied, ErrorText(EBUSY) + ": " + file.Path());
    }
}

// A copy of the file with `bytes` in place of the `oldSize` bytes at the offset takes the file's place.
void SaveByCopy(const OpenedFile& file, std::uint64_t offset, std::uint64_t oldSize,
                std::span<const std::byte> bytes, SaveTimes times) {
    const std::string& path = file.Path();
    const std::string target = RealPath(path);
    const struct stat facts = FactsOf(file);
    TemporaryCopy copy;
    Check(copy.Begin(target), path);
    AppendRange(copy, file, 0, offset);
    Check(copy.Append(bytes), path);
    AppendRange(copy, file, std::min(offset + oldSize, file.Size()), file.Size());
    KeepOwnerAndRights(copy.Number(), facts, path);
    CopyAttributes(file.Number(), copy.Number());
    if (times == SaveTimes::Keep) {
        SetTimes(copy.Number(), facts);
    }
    CheckUnchanged(file);
    Check(copy.MoveToTarget(), path);
}

void WriteInPlace(OpenedFile& file, std::uint64_t offset, std::span<const std::byte> oldBytes,
                  std::span<const std::byte> bytes, SaveTimes times) {
    const struct stat facts = FactsOf(file);
    try {
        file.WriteAt(offset, bytes);
        if (times == SaveTimes::Keep) {
            SetTimes(file.Number(), facts);
        }
        file.BringToDisk(); // Where a file system takes bytes on trust, it tells here that it has no room.
    } catch (const RuntimeError&) {
        IgnoreFailure([&] { file.WriteAt(offset, oldBytes); });
        SetTimes(file.Number(), facts);
        IgnoreFailure([&] { file.BringToDisk(); });
        throw;
    }
}

} // namespace

void OverwriteBytes(OpenedFile& file, std::uint64_t offset, std::span<const std::byte> oldBytes,
                    std::span<const std::byte> bytes, SaveTimes times, WithoutCopy withoutCopy) {
    const auto first = std::mismatch(bytes.begin(), bytes.end(), oldBytes.begin());
    if (first.first == bytes.end()) {
        return;
    }
    const auto begin = static_cast<std::size_t>(first.first - bytes.begin());
    std::size_t end = bytes.size();
    while (bytes[end - 1] == oldBytes[end - 1]) {
        --end;
    }
    const auto writeInPlace = [&] {
        CheckUnchanged(file);
        WriteInPlace(file, offset + begin, oldBytes.subspan(begin, end - begin),
                     bytes.subspan(begin, end - begin), times);
    };
    const bool inPlaceAllowed = withoutCopy == WithoutCopy::InPlace;
    if ((offset + begin) / PageSize == (offset + end - 1) / PageSize ||
        (inPlaceAllowed && FactsOf(file).st_nlink > 1)) {
        writeInPlace();
        return;
    }
    try {
        SaveByCopy(file, offset, oldBytes.size(), bytes, times);
    } catch (const RuntimeError&) {
        if (!inPlaceAllowed) {
            throw;
        }
        writeInPlace();
    }
}

void ReplaceHead(const OpenedFile& file, std::uint64_t oldSize, std::span<const std::byte> head) {
    SaveByCopy(file, 0, oldSize, head, SaveTimes::Keep);
}

} // namespace quavernet::posix
