#include "adapters/posix/PosixReadAhead.h"

#include "adapters/posix/MountTable.h"
#include "adapters/posix/ReaderPool.h"

#include <algorithm>
#include <utility>

#include <fcntl.h>
#include <sys/resource.h>

namespace quavernet {

namespace {

using posix::AheadPlan;
using posix::ReaderPool;

// Files stay open until their turn comes: of those that a process may have open at once, the smaller part.
AheadPlan::Limits LimitsOfProcess() {
    AheadPlan::Limits limits;
    struct rlimit most {};
    if (::getrlimit(RLIMIT_NOFILE, &most) == 0) {
        const std::size_t part = static_cast<std::size_t>(std::min<rlim_t>(most.rlim_cur, 65536)) / 8;
        limits.files = std::clamp<std::size_t>(part, 1, limits.files);
        limits.folders = std::clamp<std::size_t>(part, 1, limits.folders);
    }
    return limits;
}

// Whether another volume is mounted below the folder: that one may be slow though the folder is not.
bool HoldsOtherVolumes(const posix::MountTable& mounts, const std::string& folder) {
    const std::string below = folder.ends_with('/') ? folder : folder + '/';
    const std::vector<std::string> volumes = mounts.UserVolumes();
    return std::any_of(volumes.begin(), volumes.end(),
                       [&](const std::string& volume) { return volume.starts_with(below); });
}

class FilesOfPool : public FilesAhead {
public:
    FilesOfPool(std::shared_ptr<ReaderPool> pool, std::shared_ptr<AheadPlan> plan)
        : m_pool(std::move(pool)), m_plan(std::move(plan)) {}
    ~FilesOfPool() override { m_pool->End(m_plan); }
    FilesOfPool(const FilesOfPool&) = delete;
    FilesOfPool& operator=(const FilesOfPool&) = delete;

    bool IsListed(const std::string& folder, std::chrono::milliseconds most) override {
        return m_pool->WaitForFolder(*m_plan, folder, most);
    }
    bool IsRead(const std::string& path, Ahead part, std::chrono::milliseconds most) override {
        return m_pool->WaitForFile(*m_plan, path, part, most);
    }

private:
    std::shared_ptr<ReaderPool> m_pool;
    std::shared_ptr<AheadPlan> m_plan;
};

class PosixReadAhead : public ReadAhead {
public:
    explicit PosixReadAhead(std::shared_ptr<ReaderPool> pool) : m_pool(std::move(pool)) {}

    std::unique_ptr<FilesAhead> Walk(WalkAhead walk) override {
        m_mounts.Refresh();
        const posix::Descriptor folder = posix::OpenPath(walk.folder, O_PATH | O_DIRECTORY);
        const posix::FileSystemKind kind = m_pool->KindOf(folder.Get());
        const bool isAllOfOneKind = !HoldsOtherVolumes(m_mounts, walk.folder);
        if (kind == posix::FileSystemKind::Memory && isAllOfOneKind) {
            return nullptr;
        }
        const bool maySleep = kind == posix::FileSystemKind::Disk && isAllOfOneKind;
        return Begin(std::make_shared<AheadPlan>(std::move(walk), maySleep, LimitsOfProcess()));
    }

    std::unique_ptr<FilesAhead> Files(std::vector<std::string> paths, Ahead wanted,
                                      std::size_t kept) override {
        AheadPlan::Limits limits = LimitsOfProcess();
        limits.kept = kept;
        return Begin(std::make_shared<AheadPlan>(std::move(paths), wanted, limits));
    }

private:
    std::unique_ptr<FilesAhead> Begin(std::shared_ptr<AheadPlan> plan) {
        return m_pool->Begin(plan) ? std::make_unique<FilesOfPool>(m_pool, std::move(plan)) : nullptr;
    }

    std::shared_ptr<ReaderPool> m_pool;
    posix::MountTable m_mounts;
};

} // namespace

std::shared_ptr<posix::ReaderPool> CreateReaderPool() {
    return std::make_shared<ReaderPool>();
}

std::unique_ptr<ReadAhead> CreatePosixReadAhead(std::shared_ptr<posix::ReaderPool> pool) {
    return std::make_unique<PosixReadAhead>(std::move(pool));
}

} // namespace quavernet
