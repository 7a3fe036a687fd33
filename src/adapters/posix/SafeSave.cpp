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

// Gathers what comes in small pieces: the system gets few and large ones.
class CopyOfFile : public FileCopy {
public:
    explicit CopyOfFile(const OpenedFile& file) : m_file(file) {
        m_block.resize(static_cast<std::size_t>(std::min<std::uint64_t>(CopyBlock, file.Size() + PageSize)));
        Check(m_copy.Begin(RealPath(file.Path())), file.Path());
    }

    void Append(std::span<const std::byte> bytes) override {
        while (!bytes.empty()) {
            const auto room = Room(bytes.size());
            std::copy_n(bytes.begin(), room.size(), room.begin());
            m_held += room.size();
            bytes = bytes.subspan(room.size());
        }
    }

    void AppendOld(std::uint64_t begin, std::uint64_t end) override {
        while (begin < end) {
            const std::size_t count = m_file.ReadAt(begin, Room(end - begin));
            Check(count > 0 ? 0 : EIO, m_file.Path()); // The file was cut while it was copied.
            m_held += count;
            begin += count;
        }
    }

    /// The copy, which then holds all that was appended.
    TemporaryCopy& Whole() {
        WriteHeld();
        return m_copy;
    }

private:
    void WriteHeld() {
        Check(m_copy.Append(std::span(m_block).first(m_held)), m_file.Path());
        m_held = 0;
    }

    // Where the next bytes go: as many as wanted, or fewer.
    std::span<std::byte> Room(std::uint64_t wanted) {
        if (m_held == m_block.size()) {
            WriteHeld();
            // The disk is at work while the next block is made; that it has all is asked at the end.
            ::sync_file_range(m_copy.Number(), 0, 0, SYNC_FILE_RANGE_WRITE);
        }
        const auto room = std::span(m_block).subspan(m_held);
        return room.first(static_cast<std::size_t>(std::min<std::uint64_t>(wanted, room.size())));
    }

    const OpenedFile& m_file;
    TemporaryCopy m_copy;
    std::vector<std::byte> m_block;
    std::size_t m_held = 0; ///< Bytes in the block that were not handed to the system yet.
};

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

void SaveByCopy(const OpenedFile& file, const std::function<void(FileCopy&)>& compose, SaveTimes times) {
    const struct stat facts = FactsOf(file);
    CopyOfFile composed(file);
    compose(composed);
    TemporaryCopy& copy = composed.Whole();
    KeepOwnerAndRights(copy.Number(), facts, file.Path());
    CopyAttributes(file.Number(), copy.Number());
    if (times == SaveTimes::Keep) {
        SetTimes(copy.Number(), facts);
    }
    CheckUnchanged(file);
    Check(copy.MoveToTarget(), file.Path());
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
        const auto withBytes = [&](FileCopy& copy) {
            copy.AppendOld(0, offset);
            copy.Append(bytes);
            copy.AppendOld(offset + oldBytes.size(), file.Size());
        };
        SaveByCopy(file, withBytes, times);
    } catch (const RuntimeError&) {
        if (!inPlaceAllowed) {
            throw;
        }
        writeInPlace();
    }
}

void RewriteFile(const OpenedFile& file, const std::function<void(FileCopy&)>& compose) {
    SaveByCopy(file, compose, SaveTimes::Keep);
}

} // namespace quavernet::posix
