// The user's files on a POSIX system. Made by RealServices.
#pragma once

#include "platform/UserFiles.h"

#include <memory>
#include <string>
#include <utility>

namespace quavernet {

namespace posix {
class ReaderPool;
}

class PosixFiles : public UserFiles {
public:
    PosixFiles() = default;

    /// Gives the files that have been read ahead.
    explicit PosixFiles(std::shared_ptr<posix::ReaderPool> ahead) : m_ahead(std::move(ahead)) {}

    std::unique_ptr<BinaryFile> Open(const std::string& path, BinaryFile::Access access) override;
    std::unique_ptr<NewFile> Create(const std::string& path) override;
    std::unique_ptr<NewFile> CreatePrivate(const std::string& path) override;

private:
    std::shared_ptr<posix::ReaderPool> m_ahead;
};

} // namespace quavernet
