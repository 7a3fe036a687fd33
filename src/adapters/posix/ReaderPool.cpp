#include "adapters/posix/ReaderPool.h"

#include "platform/Paths.h"

#include <algorithm>
#include <exception>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <sys/resource.h>

namespace quavernet::posix {

namespace {

constexpr std::size_t MostToClose = 32;    // So much that nobody needs any more is closed before all else.
constexpr std::size_t EasyQuestions = 256; // After so many without a wait there are readers enough.
constexpr std::size_t LongestListing = 1 << 20; // Bytes of a folder's listing that are read ahead.

std::unique_ptr<FolderListing> ListAhead(const std::string& path) {
    auto listing = std::make_unique<FolderListing>(OpenListing(path));
    while (listing->entries.size() < LongestListing && AppendPiece(*listing)) {
    }
    return listing;
}

std::uint64_t BlocksOfThread() {
    struct rusage use {};
    return ::getrusage(RUSAGE_THREAD, &use) == 0 ? static_cast<std::uint64_t>(use.ru_inblock) : 0;
}

// Whether it is a plain file, and none of the kernel's, of which some act when they are opened.
bool MayBeOpened(const Descriptor& file, FileSystemKind kind) {
    struct statx facts {};
    return ::statx(file.Get(), "", AT_EMPTY_PATH, STATX_TYPE, &facts) == 0 && S_ISREG(facts.stx_mode) &&
           kind != FileSystemKind::Kernel;
}

} // namespace

ReaderPool::ReaderPool(Disk disk, std::size_t mostThreads)
    : m_disk(std::move(disk)), m_mostThreads(mostThreads) {}

ReaderPool::Disk ReaderPool::RealDisk() {
    return {[](const std::string& path) { return std::make_shared<FileAhead>(path); }, &ListAhead,
            [](const std::string& path) { return OpenPath(path, O_PATH); },
            [](int fd) { return KindOfFileSystem(fd); }, &BlocksOfThread};
}

bool ReaderPool::Begin(const std::shared_ptr<AheadPlan>& plan) {
    const std::lock_guard lock(m_mutex);
    if (m_away >= m_mostThreads) {
        return false;
    }
    m_plans.push_back(plan);
    m_allowed = 1;
    m_easy = 0;
    if (m_readers == 0 && !plan->IsAsleep() && !Hire()) {
        m_plans.pop_back();
        return false;
    }
    m_work.notify_one();
    return true;
}

void ReaderPool::End(const std::shared_ptr<AheadPlan>& plan) {
    ToClose unclosed; // Outlives the lock: to close a file may hang.
    const std::lock_guard lock(m_mutex);
    std::erase(m_plans, plan);
    plan->Clear(m_toClose);
    m_away += plan->BusyReaders();
    m_readers -= plan->BusyReaders();
    // Without a thread to be had, those that hang close it when they come back.
    if (!m_toClose.IsEmpty() && m_idle == 0 && !Hire() && m_readers + m_away == 0) {
        std::swap(unclosed, m_toClose);
    }
    m_work.notify_all();
}

// A thread that nobody waits for: it may hang for as long as the disk does. False if there is none to be had,
// or if as many hang as may.
bool ReaderPool::Hire() {
    if (m_readers + m_away >= m_mostThreads) {
        return false;
    }
    try {
        std::thread([self = shared_from_this()] { self->Serve(); }).detach();
        ++m_readers;
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

// Its user has waited in vain, and nobody is at it: all the others hang. False if no reader will be either.
bool ReaderPool::HireOneMore() {
    m_allowed = std::max(m_allowed, m_readers - m_idle + 1);
    const bool isThere = m_idle > 0 || Hire();
    m_work.notify_all();
    return isThere;
}

// The user waits, so there are too few of them.
void ReaderPool::HireMore() {
    m_easy = 0;
    m_allowed = std::max(m_allowed, std::min(2 * m_allowed, MostReaders)); // One more may have been needed.
    while (m_readers < m_allowed && Hire()) {
    }
    m_work.notify_all();
}

template <typename Ask>
bool ReaderPool::Wait(AheadPlan& plan, bool isFolder, std::chrono::milliseconds most, const Ask& ask) {
    std::unique_lock lock(m_mutex);
    if (plan.IsAsleep()) {
        plan.NoteBlocks(m_disk.blocks, isFolder);
        if (plan.IsAsleep()) {
            return ask();
        }
        HireMore();
    }
    bool isReady = ask();
    if (!isReady) {
        HireMore();
        // What nobody will read ahead is ready to be read by its user.
        isReady = m_readers == 0 || m_done.wait_for(lock, most, ask);
        if (!isReady && plan.NeedsReader()) {
            isReady = !HireOneMore();
        }
    } else if (++m_easy == EasyQuestions) {
        m_easy = 0;
        m_allowed = std::max<std::size_t>(m_allowed / 2, 1);
    }
    WakeForRoom(plan);
    return isReady;
}

void ReaderPool::WakeForRoom(const AheadPlan& plan) {
    if (plan.HasRoom() && m_idle > 0 && m_readers - m_idle < m_allowed) {
        m_work.notify_one();
    }
}

bool ReaderPool::WaitForFolder(AheadPlan& plan, const std::string& path, std::chrono::milliseconds most) {
    return Wait(plan, true, most, [&] { return plan.AskFolder(path, m_toClose); });
}

bool ReaderPool::WaitForFile(AheadPlan& plan, const std::string& path, Ahead part,
                             std::chrono::milliseconds most) {
    if (plan.SleepsOn()) {
        return true;
    }
    return Wait(plan, false, most, [&] { return plan.AskFile(path, part, m_toClose); });
}

std::unique_ptr<FolderListing> ReaderPool::TakeListing(const std::string& path) {
    const std::lock_guard lock(m_mutex);
    for (const auto& plan : m_plans) {
        if (auto listing = plan->TakeListing(path)) {
            return listing;
        }
    }
    return nullptr;
}

std::shared_ptr<FileAhead> ReaderPool::CurrentFile(const std::string& path) {
    const std::lock_guard lock(m_mutex);
    for (const auto& plan : m_plans) {
        if (auto file = plan->CurrentFile(path)) {
            return file;
        }
    }
    return nullptr;
}

std::size_t ReaderPool::Readers() const {
    const std::lock_guard lock(m_mutex);
    return m_readers;
}

void ReaderPool::Serve() {
    std::unique_lock lock(m_mutex);
    while (true) {
        const bool isFull = m_toClose.files.size() + m_toClose.listings.size() >= MostToClose;
        if (std::optional<Task> task = isFull ? std::nullopt : NextTask()) {
            if (m_idle > 0 && m_readers - m_idle < m_allowed) {
                m_work.notify_one(); // Where one finds work there may be more.
            }
            lock.unlock();
            AheadResult result = Do(*task);
            lock.lock();
            if (!Deliver(*task, std::move(result))) {
                return;
            }
        } else if (!m_toClose.IsEmpty()) {
            if (!Close(lock)) {
                return;
            }
        } else if (m_plans.empty()) {
            --m_readers;
            return;
        } else {
            ++m_idle;
            m_work.wait(lock);
            --m_idle;
        }
    }
}

// To close a file may hang too: who does it is no reader meanwhile. False if the thread is one too many.
bool ReaderPool::Close(std::unique_lock<std::mutex>& lock) {
    ToClose toClose;
    std::swap(toClose, m_toClose);
    --m_readers;
    ++m_away;
    lock.unlock();
    toClose.files.clear();
    toClose.listings.clear();
    lock.lock();
    return ComeBack();
}

bool ReaderPool::ComeBack() {
    --m_away;
    if (m_readers >= MostReaders && m_toClose.IsEmpty()) {
        return false;
    }
    ++m_readers;
    return true;
}

// Those that are one too many do nothing. What began last is waited for first: it runs inside the others.
std::optional<ReaderPool::Task> ReaderPool::NextTask() {
    if (m_readers - m_idle > m_allowed) {
        return std::nullopt;
    }
    for (auto plan = m_plans.rbegin(); plan != m_plans.rend(); ++plan) {
        if (auto job = (*plan)->NextJob()) {
            return Task{*plan, std::move(*job)};
        }
    }
    return std::nullopt;
}

// What can't be read ahead, for whatever reason, is read when it is wanted.
AheadResult ReaderPool::Do(const Task& task) const {
    const std::uint64_t blocks = m_disk.blocks();
    AheadResult result;
    try {
        const bool isFolder = task.job.file == AheadJob::NoFile;
        result = isFolder ? List(*task.plan, task.job.path) : Read(task.job);
    } catch (const std::exception&) {
        result = {};
    }
    result.blocks = m_disk.blocks() - blocks;
    return result;
}

AheadResult ReaderPool::Read(const AheadJob& job) const {
    AheadResult result;
    const bool isOpened = job.part == Ahead::Contents;
    // Nobody has looked at what a path of a plan of files leads to.
    if (job.folder->path.empty()) {
        const Descriptor place = m_disk.look(job.path);
        result.kind = m_disk.kindOf(place.Get());
        if (place.IsOpen() && !MayBeOpened(place, result.kind)) {
            return result;
        }
    } else if (!isOpened) {
        struct statx facts {};
        QueryPath(job.path, facts);
    }
    if (isOpened) {
        result.file = m_disk.read(job.path);
    }
    return result;
}

// What an entry is, for a listing that does not tell, or for a link. 0 where it can't be told, and for what
// is not to be opened.
unsigned ReaderPool::KindOfEntry(const FolderListing& listing, const dirent64& entry, Ahead wanted) const {
    if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK) {
        return entry.d_type;
    }
    struct statx facts {};
    if (!QueryEntry(listing.folder.Get(), entry.d_name, facts)) {
        return 0;
    }
    if (S_ISDIR(facts.stx_mode)) {
        // The walk lists what a link leads to after all other folders, or not at all.
        return entry.d_type == DT_LNK ? 0 : DT_DIR;
    }
    if (!S_ISREG(facts.stx_mode) || wanted == Ahead::Nothing) {
        return 0;
    }
    const Descriptor place(::openat(listing.folder.Get(), entry.d_name, O_PATH | O_CLOEXEC));
    return MayBeOpened(place, m_disk.kindOf(place.Get())) ? DT_REG : 0;
}

AheadResult ReaderPool::List(const AheadPlan& plan, const std::string& path) const {
    AheadResult result;
    auto listing = m_disk.list(path);
    result.kind = m_disk.kindOf(listing->folder.Get());
    // A folder that failed here is asked again by its user: the reason may be over.
    if (result.kind == FileSystemKind::Kernel || listing->error != 0) {
        return result;
    }
    ForEachEntry(listing->entries, [&](const dirent64& entry) {
        const std::string_view name = entry.d_name;
        const Ahead wanted = entry.d_type == DT_DIR ? Ahead::Nothing : plan.Walk().wants(name);
        if (entry.d_type != DT_DIR && entry.d_type != DT_UNKNOWN && wanted == Ahead::Nothing) {
            return;
        }
        const unsigned kind = KindOfEntry(*listing, entry, wanted);
        if (kind == DT_REG && wanted != Ahead::Nothing) {
            result.files.emplace_back(std::string(name), wanted);
        } else if (kind == DT_DIR) {
            std::string below = WithFinalSlash(path).append(name);
            if (plan.Walk().enters(below)) {
                result.subFolders.push_back(std::move(below));
            }
        }
    });
    result.listing = std::move(listing);
    return result;
}

// False if the thread is one too many.
bool ReaderPool::Deliver(const Task& task, AheadResult result) {
    task.plan->Finish(task.job, std::move(result), m_toClose);
    if (std::find(m_plans.begin(), m_plans.end(), task.plan) == m_plans.end()) {
        return ComeBack();
    }
    if (task.plan->IsAsleep() || task.plan->IsAwaited(task.job)) {
        m_done.notify_all();
    }
    return true;
}

} // namespace quavernet::posix
