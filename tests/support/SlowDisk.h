// Readers ahead on the real file system, with files and folders that hang until a test lets them go, and the
// services that share them.
#pragma once

#include "adapters/posix/PosixFileSystem.h"
#include "adapters/posix/PosixFiles.h"
#include "adapters/posix/PosixReadAhead.h"
#include "adapters/posix/ReaderPool.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace quavernet::test {

class SlowDisk {
public:
    explicit SlowDisk(posix::FileSystemKind kind = posix::FileSystemKind::Share,
                      std::size_t mostThreads = posix::ReaderPool::MostThreads)
        : m_shared(Make(kind)), m_pool(std::make_shared<posix::ReaderPool>(DiskOf(m_shared), mostThreads)) {}
    ~SlowDisk() { LetGo(); }
    SlowDisk(const SlowDisk&) = delete;
    SlowDisk& operator=(const SlowDisk&) = delete;

    /// Reading this file, or listing this folder, hangs from now on.
    void Hang(const std::string& path) {
        const std::lock_guard lock(m_shared->mutex);
        m_shared->hanging.insert(path);
    }
    /// To look for this file hangs from now on.
    void HangLooks(const std::string& path) {
        const std::lock_guard lock(m_shared->mutex);
        m_shared->missing.insert(path);
    }
    void LetGo() {
        const std::lock_guard lock(m_shared->mutex);
        m_shared->hanging.clear();
        m_shared->missing.clear();
        m_shared->closesHang = false;
        m_shared->changed.notify_all();
    }

    /// All but this one.
    void LetGoOthers(const std::string& hanging) {
        const std::lock_guard lock(m_shared->mutex);
        m_shared->hanging = {hanging};
        m_shared->changed.notify_all();
    }

    /// To close a file hangs from now on.
    void HangCloses() { m_shared->closesHang = true; }

    /// Whether what is read comes from the disk from now on, and not from the system's memory.
    void SetCold(bool isCold) { m_shared->isCold = isCold; }

    /// What readers have begun to read or list, in that order.
    std::vector<std::string> Reads() const { return Copy(m_shared->reads); }
    std::vector<std::string> Listings() const { return Copy(m_shared->listings); }

    /// What they have begun to look for, in plans of files.
    std::vector<std::string> Looks() const { return Copy(m_shared->looks); }

    /// Wait until so many files, or folders, have been begun.
    void AwaitReads(std::size_t count) const { Await(m_shared->reads, count); }
    void AwaitListings(std::size_t count) const { Await(m_shared->listings, count); }

    std::shared_ptr<posix::ReaderPool> Pool() const { return m_pool; }

private:
    // Readers that hang may outlive the test.
    struct Shared {
        std::mutex mutex;
        std::condition_variable changed;
        std::set<std::string> hanging;
        std::set<std::string> missing; ///< To look for them hangs.
        std::vector<std::string> reads;
        std::vector<std::string> looks;
        std::vector<std::string> listings;
        posix::FileSystemKind kind = posix::FileSystemKind::Share;
        std::atomic<bool> isCold = false;
        std::atomic<bool> closesHang = false;
        std::atomic<std::uint64_t> blocks = 0;
        posix::ReaderPool::Disk real = posix::ReaderPool::RealDisk();

        void Reach(const std::string& path, std::vector<std::string>& list,
                   const std::set<std::string>& held) {
            std::unique_lock lock(mutex);
            list.push_back(path);
            changed.notify_all();
            changed.wait(lock, [&] { return !held.contains(path); });
        }
        void Close() {
            std::unique_lock lock(mutex);
            changed.wait(lock, [&] { return !closesHang; });
        }
    };

    static std::shared_ptr<Shared> Make(posix::FileSystemKind kind) {
        auto shared = std::make_shared<Shared>();
        shared->kind = kind;
        return shared;
    }
    static posix::ReaderPool::Disk DiskOf(const std::shared_ptr<Shared>& shared) {
        return {[shared](const std::string& path) {
                    shared->Reach(path, shared->reads, shared->hanging);
                    const auto file = shared->real.read(path);
                    return std::shared_ptr<posix::FileAhead>(
                        file.get(), [shared, file](posix::FileAhead*) { shared->Close(); });
                },
                [shared](const std::string& path) {
                    shared->Reach(path, shared->listings, shared->hanging);
                    return shared->real.list(path);
                },
                [shared](const std::string& path) {
                    shared->Reach(path, shared->looks, shared->missing);
                    return shared->real.look(path);
                },
                [shared](int fd) {
                    const auto kind = shared->real.kindOf(fd);
                    return kind == posix::FileSystemKind::Kernel ? kind : shared->kind;
                },
                [shared] { return shared->isCold ? ++shared->blocks : shared->blocks.load(); }};
    }
    void Await(const std::vector<std::string>& list, std::size_t count) const {
        std::unique_lock lock(m_shared->mutex);
        ASSERT_TRUE(
            m_shared->changed.wait_for(lock, std::chrono::minutes(1), [&] { return list.size() >= count; }))
            << list.size() << " begun of " << count;
    }
    std::vector<std::string> Copy(const std::vector<std::string>& list) const {
        const std::lock_guard lock(m_shared->mutex);
        return list;
    }

    std::shared_ptr<Shared> m_shared;
    std::shared_ptr<posix::ReaderPool> m_pool;
};

/// The services over such a disk.
struct SlowServices {
    explicit SlowServices(posix::FileSystemKind kind = posix::FileSystemKind::Share,
                          std::size_t mostThreads = posix::ReaderPool::MostThreads)
        : disk(kind, mostThreads) {}

    SlowDisk disk;
    PosixFiles files{disk.Pool()};
    std::unique_ptr<FileSystemObject> fileSystem = CreatePosixFileSystem(disk.Pool());
    std::unique_ptr<ReadAhead> readAhead = CreatePosixReadAhead(disk.Pool());
};

} // namespace quavernet::test
