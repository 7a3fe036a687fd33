// The threads that read ahead. PosixReadAhead hands them plans; PosixFiles and PosixFolderWalk take from here
// what they have brought.
#pragma once

#include "adapters/posix/AheadPlan.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace quavernet::posix {

class ReaderPool : public std::enable_shared_from_this<ReaderPool> {
public:
    /// How the readers reach the disk; tests bring one that hangs.
    struct Disk {
        std::function<std::shared_ptr<FileAhead>(const std::string& path)> read;
        std::function<std::unique_ptr<FolderListing>(const std::string& path)> list;
        std::function<Descriptor(const std::string& path)> look; ///< What a path leads to, not opened.
        std::function<FileSystemKind(int fd)> kindOf;
        std::function<std::uint64_t()> blocks; ///< That any disk has given to the calling thread so far.
    };

    static constexpr std::size_t MostReaders = 32;
    static constexpr std::size_t MostThreads = 256; ///< Threads that hang cost memory.

    /// `mostThreads`: readers, and threads that are at something that has ended, all together.
    explicit ReaderPool(Disk disk = RealDisk(), std::size_t mostThreads = MostThreads);

    static Disk RealDisk();

    /// Of an open file or folder.
    FileSystemKind KindOf(int fd) const { return m_disk.kindOf(fd); }

    /// Begins to read for a plan, which belongs to the pool from then on. False, and nothing is begun, where
    /// no thread is to be had.
    bool Begin(const std::shared_ptr<AheadPlan>& plan);

    /// Ends that, without a wait. A reader that hangs is left alone, and another one takes its place.
    void End(const std::shared_ptr<AheadPlan>& plan);

    /// As FilesAhead tells.
    bool WaitForFolder(AheadPlan& plan, const std::string& path, std::chrono::milliseconds most);
    bool WaitForFile(AheadPlan& plan, const std::string& path, Ahead part, std::chrono::milliseconds most);

    /// What was asked for last in one of the plans, if it is that and was read; else null.
    std::unique_ptr<FolderListing> TakeListing(const std::string& path);
    std::shared_ptr<FileAhead> CurrentFile(const std::string& path);

    /// Threads that are there, but for those that are at something that has ended.
    std::size_t Readers() const;

private:
    using Plans = std::vector<std::shared_ptr<AheadPlan>>;

    struct Task {
        std::shared_ptr<AheadPlan> plan;
        AheadJob job;
    };

    template <typename Ask>
    bool Wait(AheadPlan& plan, bool isFolder, std::chrono::milliseconds most, const Ask& ask);
    bool Hire();
    bool HireOneMore();
    void HireMore();
    void WakeForRoom(const AheadPlan& plan);
    void Serve();
    bool Close(std::unique_lock<std::mutex>& lock);
    bool ComeBack();
    std::optional<Task> NextTask();
    AheadResult Do(const Task& task) const;
    AheadResult Read(const AheadJob& job) const;
    unsigned KindOfEntry(const FolderListing& listing, const dirent64& entry, Ahead wanted) const;
    AheadResult List(const AheadPlan& plan, const std::string& path) const;
    bool Deliver(const Task& task, AheadResult result);

    const Disk m_disk;
    const std::size_t m_mostThreads;

    mutable std::mutex m_mutex; ///< Guards all that follows, the plans too, but not while the disk is asked.
    std::condition_variable m_work;
    std::condition_variable m_done;
    Plans m_plans;
    ToClose m_toClose;
    std::size_t m_readers = 0;
    std::size_t m_idle = 0;    ///< Readers that wait for work.
    std::size_t m_allowed = 1; ///< Readers that may work at once: as many as keep the user from waiting.
    std::size_t m_away = 0;    ///< Threads that still work for a plan that has ended, or close files.
    std::size_t m_easy = 0;    ///< Questions since the last that had to wait.
};

} // namespace quavernet::posix
