#include "adapters/posix/PosixFileSystem.h"

#include "adapters/posix/Descriptor.h"
#include "adapters/posix/MountTable.h"
#include "adapters/posix/PosixFolderWalk.h"
#include "adapters/posix/Rename.h"
#include "adapters/posix/WholeFileCopy.h"
#include "platform/RuntimeError.h"
#include "platform/WriteError.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

namespace quavernet {

namespace {

using posix::ErrorText;

RuntimeError PathError(int number, int error, const std::string& path) {
    return RuntimeError(number, ErrorText(error) + ": " + path);
}

int NumberOfWrite(int error) {
    if (IsDiskFull(error)) {
        return ErrorNumber::DiskFull;
    }
    if (IsWriteRefused(error)) {
        return ErrorNumber::PermissionDenied;
    }
    return error == EEXIST ? ErrorNumber::FileAlreadyExists : ErrorNumber::PathFileAccess;
}

// Why a folder can't be made: "exists already" would be true of what is there, but tell nothing.
RuntimeError InTheWay(int error, const std::string& part) {
    struct statx facts {};
    if (error != EEXIST) {
        return PathError(NumberOfWrite(error), error, part);
    }
    if (posix::QueryPath(part, facts)) {
        return PathError(ErrorNumber::FileAlreadyExists, ENOTDIR, part);
    }
    const int reason = errno;
    std::error_code ignored;
    const std::string target = std::filesystem::read_symlink(part, ignored).native();
    return PathError(ErrorNumber::FileAlreadyExists, reason, part + (target.empty() ? "" : " -> " + target));
}

class PosixFileSystem : public FileSystemObject {
public:
    explicit PosixFileSystem(std::shared_ptr<posix::ReaderPool> ahead) : m_ahead(std::move(ahead)) {}

    std::unique_ptr<FolderWalk> GetFolder(const std::string& path) override {
        const posix::Descriptor folder = posix::OpenPath(path, O_RDONLY | O_DIRECTORY | O_NONBLOCK);
        if (!folder.IsOpen()) {
            throw PathError(ErrorNumber::PathNotFound, errno, path);
        }
        m_mounts->Refresh();
        return std::make_unique<posix::PosixFolderWalk>(path, m_mounts, m_ahead);
    }

    FileFacts GetFile(const std::string& path) override {
        struct statx facts {};
        if (!posix::QueryPath(path, facts)) {
            throw PathError(ErrorNumber::FileNotFound, errno, path);
        }
        m_mounts->Refresh();
        if (!IsFile(facts)) {
            throw PathError(ErrorNumber::FileNotFound, S_ISDIR(facts.stx_mode) ? EISDIR : EOPNOTSUPP, path);
        }
        return posix::FactsOf(posix::NormalPath(path), facts, *m_mounts);
    }

    bool FileExists(const std::string& path) override {
        struct statx facts {};
        if (!posix::QueryPath(path, facts)) {
            return false;
        }
        m_mounts->Refresh();
        return IsFile(facts);
    }

    bool FolderExists(const std::string& path) override {
        struct statx facts {};
        return posix::QueryPath(path, facts) && S_ISDIR(facts.stx_mode);
    }

    void CreateFolder(const std::string& path) override {
        const std::string full = posix::NormalPath(path);
        for (std::size_t end = 1; end < full.size();) {
            end = std::min(full.find('/', end + 1), full.size());
            const std::string part = full.substr(0, end);
            if (::mkdir(part.c_str(), 0777) != 0) {
                const int error = errno;
                if (!FolderExists(part)) {
                    throw InTheWay(error, part);
                }
            }
        }
    }

    void CopyFile(const std::string& source, const std::string& target) override {
        if (!FileExists(source)) {
            throw PathError(ErrorNumber::FileNotFound, ENOENT, source);
        }
        const posix::Descriptor from = posix::OpenPath(source, O_RDONLY | O_NONBLOCK);
        if (!from.IsOpen()) {
            throw PathError(ErrorNumber::PathFileAccess, errno, source);
        }
        if (const int error = posix::CopyWholeFile(from, target); error != 0) {
            throw PathError(NumberOfWrite(error), error, target);
        }
    }

    void RenameFile(const std::string& source, const std::string& target) override {
        switch (const int error = posix::RenameToFreeName(source, target)) {
        case 0:
            return;
        case ENOENT:
            throw PathError(ErrorNumber::FileNotFound, error, source);
        case ENOTDIR:
            throw PathError(ErrorNumber::PathNotFound, error, target);
        default:
            throw PathError(NumberOfWrite(error), error, target);
        }
    }

    std::vector<std::string> LogicalDrives() override {
        m_mounts->Refresh();
        return m_mounts->UserVolumes();
    }

    // Network files are opened through their mount point here, so that no volume has a root of its own.
    std::optional<std::string> NetworkRoot(const std::string&) override { return std::nullopt; }

private:
    // The kernel's files look plain, but many of them change or block when they are read.
    bool IsFile(const struct statx& facts) const {
        return S_ISREG(facts.stx_mode) && !m_mounts->IsKernelDevice(facts.stx_dev_major, facts.stx_dev_minor);
    }

    std::shared_ptr<posix::MountTable> m_mounts = std::make_shared<posix::MountTable>();
    std::shared_ptr<posix::ReaderPool> m_ahead;
};

} // namespace

std::unique_ptr<FileSystemObject> CreatePosixFileSystem(std::shared_ptr<posix::ReaderPool> ahead) {
    return std::make_unique<PosixFileSystem>(std::move(ahead));
}

} // namespace quavernet
