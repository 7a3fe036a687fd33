// The user's files on a POSIX system. Made by RealServices.
#pragma once

#include "platform/UserFiles.h"

#include <memory>
#include <string>

namespace quavernet {

class PosixFiles : public UserFiles {
public:
    std::unique_ptr<BinaryFile> Open(const std::string& path, BinaryFile::Access access) override;
    std::unique_ptr<NewFile> Create(const std::string& path) override;
    std::unique_ptr<NewFile> CreatePrivate(const std::string& path) override;
};

} // namespace quavernet
