// Readers ahead on the real file system to whom the system refuses a call, while the thread that they read
// for gets it.
#pragma once

#include "adapters/posix/ReaderPool.h"
#include "support/RefusedCalls.h"

#include <string>
#include <thread>
#include <type_traits>

namespace quavernet::test {

/// Each call of this number that a reader makes fails with this error.
inline posix::ReaderPool::Disk RefusingDisk(long call, int error) {
    const auto refused = [=](const auto& ask) {
        return [=](const std::string& path) {
            std::invoke_result_t<decltype(ask), const std::string&> result;
            std::thread([&] {
                if (Refuse({{call, 0, 0, error}})) {
                    result = ask(path);
                }
            }).join();
            return result;
        };
    };
    const auto real = posix::ReaderPool::RealDisk();
    return {refused(real.read), refused(real.list), refused(real.look),
            [](int) { return posix::FileSystemKind::Share; }, real.blocks};
}

} // namespace quavernet::test
