#include "adapters/posix/PosixFiles.h"

#include "adapters/posix/OpenedFile.h"
#include "adapters/posix/SafeSave.h"
#include "adapters/posix/SafeWrite.h"

namespace quavernet {

namespace {

class PosixFile : public BinaryFile {
public:
    PosixFile(const std::string& path, Access access) : m_file(path, access) {}

    std::uint64_t Size() const override { return m_file.Size(); }
    std::size_t ReadAt(std::uint64_t offset, std::span<std::byte> bytes) const override {
        return m_file.ReadAt(offset, bytes);
    }
    std::uint64_t NextData(std::uint64_t offset) const override { return m_file.NextData(offset); }
    void Overwrite(std::uint64_t offset, std::span<const std::byte> oldBytes,
                   std::span<const std::byte> bytes, SaveTimes times, WithoutCopy withoutCopy) override {
        posix::OverwriteBytes(m_file, offset, oldBytes, bytes, times, withoutCopy);
    }
    void Rewrite(const std::function<void(FileCopy&)>& compose) override {
        posix::RewriteFile(m_file, compose);
    }

private:
    posix::OpenedFile m_file;
};

} // namespace

std::unique_ptr<BinaryFile> PosixFiles::Open(const std::string& path, BinaryFile::Access access) {
    return std::make_unique<PosixFile>(path, access);
}

std::unique_ptr<NewFile> PosixFiles::Create(const std::string& path) {
    return posix::CreateFile(path);
}

std::unique_ptr<NewFile> PosixFiles::CreatePrivate(const std::string& path) {
    return posix::CreatePrivateFile(path);
}

} // namespace quavernet
