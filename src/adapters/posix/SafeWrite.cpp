#include "adapters/posix/SafeWrite.h"

#include "adapters/posix/FileTraits.h"
#include "adapters/posix/OpenedFile.h"
#include "adapters/posix/TemporaryCopy.h"
#include "platform/Paths.h"
#include "platform/RuntimeError.h"
#include "platform/WriteError.h"

#include <cerrno>
#include <climits>
#include <optional>
#include <span>

#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::posix {

namespace {

constexpr std::size_t BlockSize = std::size_t{64} << 10;
constexpr int MostLinks = 40; // What the system itself follows.
constexpr mode_t NewFileRights = 0666;

int NumberOf(int error) {
    if (IsDiskFull(error)) {
        return ErrorNumber::DiskFull;
    }
    switch (error) {
    case EIO:
        return ErrorNumber::DeviceInputOutput;
    case ENOENT:
    case ENOTDIR:
        return ErrorNumber::PathNotFound;
    default:
        return ErrorNumber::PathFileAccess;
    }
}

// What the link leads to; nothing if the path is no link.
std::optional<std::string> LinkTarget(const std::string& path) {
    std::string target(PATH_MAX, '\0');
    const ssize_t length = ::readlink(path.c_str(), target.data(), target.size());
    if (length < 0) {
        return std::nullopt;
    }
    target.resize(static_cast<std::size_t>(length));
    return target.starts_with('/') ? target : WithFinalSlash(FolderFromPath(path)) + target;
}

// Where a file that is not there yet is to come: a link may lead to it.
std::string NewPlace(std::string path) {
    for (int links = 0; links < MostLinks; ++links) {
        std::optional<std::string> target = LinkTarget(path);
        if (!target) {
            break;
        }
        path = *std::move(target);
    }
    return path;
}

// What every new file does; in what way it takes its place is its own.
class CopiedFile : public NewFile {
public:
    void Append(std::string_view bytes) override {
        m_block += bytes;
        if (m_block.size() >= BlockSize) {
            WriteBlock();
        }
    }

    void Keep() final {
        WriteBlock();
        SetRights();
        Require(m_copy.MoveToTarget());
    }

protected:
    explicit CopiedFile(const std::string& path) : m_path(path) {}

    /// Of the copy, which is its owner's alone as yet.
    virtual void SetRights() {}

    void Require(int error) const {
        if (error != 0) {
            throw RuntimeError(NumberOf(error), ErrorText(error) + ": " + m_path);
        }
    }

    const std::string m_path;
    TemporaryCopy m_copy;

private:
    // A block that was written in part is never tried again: the file is not to be kept any more.
    void WriteBlock() {
        if (m_error == 0) {
            m_error = m_copy.Append(std::as_bytes(std::span(m_block)));
        }
        Require(m_error);
        m_block.clear();
    }

    std::string m_block; ///< Not yet handed to the system.
    int m_error = 0;     ///< Of the system, once it could not write.
};

class SafeFile : public CopiedFile {
public:
    explicit SafeFile(const std::string& path) : CopiedFile(path) {
        try {
            m_old.emplace(path,
                          BinaryFile::Access::ReadWrite); // Whoever may not write it may not replace it.
        } catch (const OpenError& error) {
            if (error.Number() != ErrorNumber::FileNotFound || path.find('\0') != std::string::npos) {
                throw;
            }
        }
        Require(m_copy.Begin(m_old ? RealPath(path) : NewPlace(path)));
    }

private:
    void SetRights() override {
        struct stat facts {};
        if (!m_old) {
            Require(::fchmod(m_copy.Number(), NewFileRights & ~NewFileMask()) == 0 ? 0 : errno);
        } else if (::fstat(m_old->Number(), &facts) == 0) {
            KeepOwnerAndRights(m_copy.Number(), facts, m_path);
            CopyAttributes(m_old->Number(), m_copy.Number());
        }
    }

    std::optional<OpenedFile> m_old;
};

// The copy stays its owner's alone, and moving it to its place follows no link.
class PrivateFile : public CopiedFile {
public:
    explicit PrivateFile(const std::string& path) : CopiedFile(path) {
        Require(path.find('\0') == std::string::npos ? m_copy.Begin(path) : EINVAL);
    }
};

} // namespace

std::unique_ptr<NewFile> CreateFile(const std::string& path) {
    return std::make_unique<SafeFile>(path);
}

std::unique_ptr<NewFile> CreatePrivateFile(const std::string& path) {
    return std::make_unique<PrivateFile>(path);
}

} // namespace quavernet::posix
