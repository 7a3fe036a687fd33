// Reads files ahead on a Linux system. Made by RealServices.
#pragma once

#include "platform/ReadAhead.h"

#include <memory>

namespace quavernet {

namespace posix {
class ReaderPool;
}

/// The pool is shared with PosixFiles and the file system, which give what has been read.
std::shared_ptr<posix::ReaderPool> CreateReaderPool();

std::unique_ptr<ReadAhead> CreatePosixReadAhead(std::shared_ptr<posix::ReaderPool> pool);

} // namespace quavernet
