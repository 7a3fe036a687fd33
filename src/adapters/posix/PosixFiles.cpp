#include "adapters/posix/PosixFiles.h"

#include "adapters/posix/OpenedFile.h"
#include "adapters/posix/ReaderPool.h"
#include "adapters/posix/SafeSave.h"
#include "adapters/posix/SafeWrite.h"

#include <utility>

namespace quavernet {

namespace {

class OpenFile : public BinaryFile {
public:
    std::uint64_t Size() const override { return File().Size(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const override {
        return File().ReadAt(offset, bytes);
    }
    std::uint64_t NextData(std::uint64_t offset) const override { return File().NextData(offset); }
    void Overwrite(std::uint64_t offset, std::span<const std::byte> oldBytes,
                   std::span<const std::byte> bytes, SaveTimes times, WithoutCopy withoutCopy) override {
        posix::OverwriteBytes(File(), offset, oldBytes, bytes, times, withoutCopy);
    }
    void Rewrite(const std::function<void(FileCopy&)>& compose) override {
        posix::RewriteFile(File(), compose);
    }

private:
    virtual posix::OpenedFile& File() const = 0;
};

class PosixFile : public OpenFile {
public:
    PosixFile(const std::string& path, Access access) : m_file(path, access) {}

private:
    posix::OpenedFile& File() const override { return m_file; }

    mutable posix::OpenedFile m_file;
};

/// One that a reader has opened already.
class FileOfReader : public OpenFile {
public:
    explicit FileOfReader(std::shared_ptr<posix::FileAhead> file) : m_file(std::move(file)) {}

    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const override {
        return m_file->ReadAt(offset, bytes);
    }

private:
    posix::OpenedFile& File() const override { return m_file->Opened(); }

    std::shared_ptr<posix::FileAhead> m_file;
};

} // namespace

std::unique_ptr<BinaryFile> PosixFiles::Open(const std::string& path, BinaryFile::Access access) {
    if (m_ahead && access == BinaryFile::Access::Read) {
        if (auto file = m_ahead->CurrentFile(path); file && file->IsStill()) {
            return std::make_unique<FileOfReader>(std::move(file));
        }
    }
    return std::make_unique<PosixFile>(path, access);
}

std::unique_ptr<NewFile> PosixFiles::Create(const std::string& path) {
    return posix::CreateFile(path);
}

std::unique_ptr<NewFile> PosixFiles::CreatePrivate(const std::string& path) {
    return posix::CreatePrivateFile(path);
}

} // namespace quavernet
