// The user's files as bytes: opened by path, read at offsets, and changed or written as a whole so that no
// mixture of old and new is ever left. The adapter lives in adapters/posix; the inspection, the tag writers,
// the readers and writers of text files and the adapters that take files apart call it.
#pragma once

#include "platform/RuntimeError.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace quavernet {

/// Why a file could not be opened: RuntimeError 53 if it is missing, 76 if a part of its path is no folder,
/// 75 if it is no plain file or may not be opened so.
class OpenError : public RuntimeError {
public:
    OpenError(int number, std::string reason, const std::string& path, bool isPlainFile)
        : RuntimeError(number, reason + ": " + path), m_reason(std::move(reason)),
          m_isPlainFile(isPlainFile) {}

    /// The system's own words, without the path.
    const std::string& Reason() const { return m_reason; }

    /// False if something is there that may be opened but is a folder, a pipe or a device.
    bool IsPlainFile() const { return m_isPlainFile; }

private:
    std::string m_reason;
    bool m_isPlainFile;
};

enum class SaveTimes { Keep, Renew }; ///< What becomes of the file's times.

/// What becomes of a change that can't go by way of a copy: the folder or the disk takes none, or the copy
/// would part the file from its other names (hard links). Written in place, a kill may tear it.
enum class WithoutCopy { Refuse, InPlace };

/// The copy of an open file that is to take its place, as it is written from its beginning to its end.
class FileCopy {
public:
    virtual ~FileCopy() = default;

    /// Throws RuntimeError 61 if the disk is full, 57 if the device fails, 75 if it fails otherwise.
    virtual void Append(std::span<const std::byte> bytes) = 0;

    /// The old file's bytes from `begin` to before `end`, which is not beyond its size. Throws as Append
    /// does.
    virtual void AppendOld(std::uint64_t begin, std::uint64_t end) = 0;
};

/// One open plain file; closed when the object goes.
class BinaryFile {
public:
    enum class Access { Read, ReadWrite }; ///< A file opened for reading can't be overwritten in place.

    virtual ~BinaryFile() = default;

    /// Bytes in the file when it was opened.
    virtual std::uint64_t Size() const = 0;

    /// Reads up to `bytes.size()` bytes from the offset (from 0); the result is their number, fewer only at
    /// the end of the file. Throws RuntimeError 57 if the device fails.
    virtual std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const = 0;

    /// Offset of the next byte that was ever written: `offset` itself or, in the hole of a sparse file,
    /// beyond it; the file's size if nothing follows but a hole. A hole reads as zeros, but reading it takes
    /// time. Gives `offset` where the file system can't tell. Never fails.
    virtual std::uint64_t NextData(std::uint64_t offset) const = 0;

    /// Writes `bytes` over `oldBytes`, which are at the offset and are as many. What differs is written in
    /// place if it lies within one page of the file: the system copies a page as a whole, and if the disk
    /// takes only a part, or can't keep it, the old bytes are put back. More than that goes by way of a copy,
    /// as in Rewrite. Either the old or the new bytes are there afterwards, also if the process is killed
    /// in the middle. Throws RuntimeError 61 if the disk is full, 57 if the device fails, 75 if it fails
    /// otherwise, and 70 if another program changed the file since it was opened, as its length, its times or
    /// the file under its path tell; then the file is as it was. One change an opening.
    virtual void Overwrite(std::uint64_t offset, std::span<const std::byte> oldBytes,
                           std::span<const std::byte> bytes, SaveTimes times,
                           WithoutCopy withoutCopy = WithoutCopy::Refuse) = 0;

    /// Has `compose` write a copy in the same folder and moves it over the file. Rights, extended attributes
    /// and times stay, and owner and group as far as the system allows; a link stays a link, other names of
    /// the file keep the old one. Throws RuntimeError as Overwrite does, and whatever `compose` throws; then
    /// the file is as it was.
    virtual void Rewrite(const std::function<void(FileCopy&)>& compose) = 0;

    /// Puts `head` in place of the first `oldSize` bytes, as Rewrite does.
    void ReplaceHead(std::uint64_t oldSize, std::span<const std::byte> head) {
        Rewrite([&](FileCopy& copy) {
            copy.Append(head);
            copy.AppendOld(oldSize < Size() ? oldSize : Size(), Size());
        });
    }
};

/// A file that is written from its beginning to its end. What was there stays until Keep, and for good if
/// this object goes without it.
class NewFile {
public:
    virtual ~NewFile() = default;

    /// Throws RuntimeError 61 if the disk is full, 57 if the device fails, 75 if it fails otherwise.
    virtual void Append(std::string_view bytes) = 0;

    /// Brings the file to the disk and to its place, in one step: either the old or the new one is there,
    /// also if the process is killed in the middle. Throws as Append does; the old file then stays. Called
    /// last.
    virtual void Keep() = 0;
};

class UserFiles {
public:
    virtual ~UserFiles() = default;

    /// Opens a plain file by a path of any length, links followed; never a pipe, a device or a folder, and
    /// never waits for one. Never creates a file. Throws OpenError.
    virtual std::unique_ptr<BinaryFile> Open(const std::string& path, BinaryFile::Access access) = 0;

    /// Begins a file that is to take the place of the one at the path, or of nothing. A link stays one and
    /// leads to the new file; rights, owner and extended attributes of an old file stay as far as the system
    /// allows, its other names keep the old one. Throws OpenError if the old one is no plain file or may not
    /// be written, RuntimeError 76 if the folder is missing, and as NewFile::Append does.
    virtual std::unique_ptr<NewFile> Create(const std::string& path) = 0;

    /// The same for a file of the program in a folder that others write to as well: readable by the user
    /// alone, and whatever is at the path goes when it is kept, a link itself instead of what it leads to.
    /// Throws RuntimeError 76 if the folder is missing, and as NewFile::Append does.
    virtual std::unique_ptr<NewFile> CreatePrivate(const std::string& path) = 0;
};

} // namespace quavernet
