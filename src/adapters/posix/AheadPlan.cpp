#include "adapters/posix/AheadPlan.h"

#include "platform/Paths.h"

#include <algorithm>
#include <utility>

namespace quavernet::posix {

namespace {

// Folders that are looked through for something to read.
constexpr std::size_t FoldersLookedAt = 64;

std::string PathOf(const AheadFolder& folder, const AheadFile& file) {
    return folder.path.empty() ? file.name : WithFinalSlash(folder.path) + file.name;
}

// The name that a file of the folder would have in it: empty if the path is that of no such file.
std::string_view NameIn(const AheadFolder& folder, std::string_view path) {
    if (folder.path.empty()) {
        return path;
    }
    const std::size_t slash = folder.path.size() - (folder.path.ends_with('/') ? 1 : 0);
    const bool isIn = path.size() > slash && path[slash] == '/' && path.starts_with(folder.path) &&
                      path.find('/', slash + 1) == std::string_view::npos;
    return isIn ? path.substr(slash + 1) : std::string_view();
}

} // namespace

AheadPlan::AheadPlan(WalkAhead walk, bool maySleep, const Limits& limits)
    : m_walk(std::move(walk)), m_limits(limits), m_sleep(maySleep) {
    if (!maySleep) {
        m_folders.push_back(std::make_shared<AheadFolder>());
        m_folders.back()->path = m_walk.folder;
    }
}

AheadPlan::AheadPlan(std::vector<std::string> paths, Ahead wanted, const Limits& limits)
    : m_limits(limits), m_sleep(false) {
    auto folder = std::make_shared<AheadFolder>();
    folder->isListed = true;
    folder->files.reserve(paths.size());
    for (std::string& path : paths) {
        AheadFile& file = folder->files.emplace_back();
        file.name = std::move(path);
        file.wanted = wanted;
    }
    m_folders.push_back(std::move(folder));
}

// Awake it goes from the first folder down to where its user is: what lies before that is over.
void AheadPlan::NoteBlocks(const std::function<std::uint64_t()>& blocks, bool isFolder) {
    if (!m_sleep.Wakes(blocks, isFolder)) {
        return;
    }
    m_isStuck = false;
    m_folders.push_back(std::make_shared<AheadFolder>());
    m_folders.back()->path = m_walk.folder;
    m_folders.back()->way = m_place;
}

void AheadPlan::NoteResult(std::uint64_t blocks, AheadRest& rest) {
    if (m_sleep.FallsAsleep(blocks)) {
        PassFolders(m_folders.end(), rest);
        m_currentFolder.reset();
    }
}

// On a disk the facts cost no more than to ask for them ahead.
Ahead AheadPlan::Needed(const AheadFolder& folder, const AheadFile& file) const {
    if (folder.kind == FileSystemKind::Memory || folder.kind == FileSystemKind::Kernel) {
        return Ahead::Nothing;
    }
    if (file.wanted == Ahead::Contents || file.wanted == Ahead::Nothing) {
        return file.wanted;
    }
    return MayFactsHang(folder, file) ? Ahead::Facts : Ahead::Nothing;
}

// In a plan of files only those facts are read that are asked for: its user may know the file, and ask for
// nothing.
bool AheadPlan::MayFactsHang(const AheadFolder& folder, const AheadFile& file) const {
    if (!folder.path.empty()) {
        return folder.kind == FileSystemKind::Share;
    }
    const bool isKnown = !m_known.empty() && FolderFromPath(file.name) == m_known;
    return file.isLookedFor && (isKnown ? m_knownKind : folder.kind) == FileSystemKind::Share;
}

// What its user has come to is read however much is there already: it may be what nobody told of.
std::optional<AheadJob> AheadPlan::NextJob() {
    std::size_t looked = 0;
    for (const auto& folder : m_folders) {
        if (folder->isListed) {
            if (auto job = NextFile(folder)) {
                ++m_busy;
                return job;
            }
        } else if (!folder->isBusy && (m_listings < m_limits.folders || folder == m_currentFolder)) {
            folder->isBusy = true;
            folder->isCounted = true;
            ++m_listings;
            ++m_busy;
            return AheadJob{folder, AheadJob::NoFile, Ahead::Facts, folder->path};
        }
        if (++looked == FoldersLookedAt) {
            break;
        }
    }
    m_isStuck = true;
    return std::nullopt;
}

std::optional<AheadJob> AheadPlan::NextFile(const std::shared_ptr<AheadFolder>& folder) {
    for (; folder->next < folder->files.size(); ++folder->next) {
        AheadFile& file = folder->files[folder->next];
        const Ahead needed = Needed(*folder, file);
        if (file.isBusy || file.has >= needed || IsKnownInMemory(*folder, file.name)) {
            continue;
        }
        const bool isCurrent = folder == m_folders.front() && folder->next == folder->passed;
        if (m_held >= m_limits.files && !isCurrent) {
            return std::nullopt;
        }
        file.isBusy = true;
        file.isHeld = needed == Ahead::Contents;
        m_held += file.isHeld ? 1 : 0;
        return AheadJob{folder, folder->next++, needed, PathOf(*folder, file)};
    }
    return std::nullopt;
}

void AheadPlan::Finish(const AheadJob& job, AheadResult result, AheadRest& rest) {
    --m_busy;
    AheadFolder& folder = *job.folder;
    if (job.file == AheadJob::NoFile) {
        if (folder.isOver) {
            rest.listings.push_back(std::move(result.listing));
        } else {
            FinishListing(job, result, rest);
        }
        NoteResult(result.blocks, rest);
        return;
    }
    AheadFile& file = folder.files[job.file];
    file.isBusy = false;
    if (folder.isOver || job.file < folder.passed) {
        rest.files.push_back(std::move(result.file));
        NoteResult(result.blocks, rest);
        return;
    }
    file.has = job.part;
    file.file = std::move(result.file);
    if (job.part == Ahead::Contents && !file.file) {
        file.isHeld = false;
        --m_held;
    }
    if (file.has < Needed(folder, file)) { // Its contents have come to be wanted meanwhile.
        folder.next = std::min(folder.next, job.file);
        m_isStuck = false;
    }
    if (folder.path.empty()) {
        m_known = FolderFromPath(file.name);
        m_knownKind = result.kind;
    }
    NoteResult(result.blocks, rest);
}

void AheadPlan::FinishListing(const AheadJob& job, AheadResult& result, AheadRest& rest) {
    AheadFolder& folder = *job.folder;
    folder.isBusy = false;
    folder.isListed = true;
    folder.kind = result.kind;
    m_isStuck = false;
    const auto here = std::find(m_folders.begin(), m_folders.end(), job.folder);
    if (!folder.way.empty()) { // Its user has listed it already.
        rest.listings.push_back(std::move(result.listing));
        FinishOnTheWay(here, result);
        return;
    }
    folder.listing = std::move(result.listing);
    folder.files = std::move(result.files);
    const auto after = std::next(here);
    for (std::string& path : result.subFolders) {
        (*m_folders.insert(after, std::make_shared<AheadFolder>()))->path = std::move(path);
    }
}

// Of a folder on the way to where its user is only those below count that come from there on, and of that one
// itself all. Where none leads on, because it vanished or was reached by a link, nobody knows what is over:
// all of them count.
void AheadPlan::FinishOnTheWay(Folders::iterator here, AheadResult& result) {
    const std::shared_ptr<AheadFolder> folder = *here;
    const auto after = std::next(here);
    Uncount(*folder);
    const std::string way = std::exchange(folder->way, {});
    auto first = result.subFolders.begin();
    bool isFound = false;
    if (folder->path == way) {
        folder->files = std::move(result.files);
    } else {
        first = std::find_if(first, result.subFolders.end(), [&](const std::string& path) {
            return way == path || way.starts_with(path + '/');
        });
        isFound = first != result.subFolders.end();
        first = isFound ? first : result.subFolders.begin();
        folder->isOver = true;
        m_folders.erase(here);
    }
    for (auto path = first; path != result.subFolders.end(); ++path) {
        const auto below = m_folders.insert(after, std::make_shared<AheadFolder>());
        (*below)->path = std::move(*path);
        if (path == first && isFound) {
            (*below)->way = way;
        }
    }
}

bool AheadPlan::AskFolder(const std::string& path, AheadRest& rest) {
    m_place = path;
    if (IsAsleep()) {
        return true;
    }
    const auto isIt = [&](const auto& folder) { return folder->path == path; };
    auto found = std::find_if(m_folders.begin(), m_folders.end(), isIt);
    if (found == m_folders.end() && MoveWay(path, rest)) {
        return true;
    }
    if (found == m_folders.end()) { // Reached by a link.
        found = m_folders.insert(m_folders.begin(), std::make_shared<AheadFolder>());
        (*found)->path = path;
        m_isStuck = false;
    }
    PassFolders(found, rest);
    m_currentFolder = *found;
    return m_currentFolder->isListed;
}

// A plan that has just woken may still be on its way to where its user was. The user does not wait for that.
bool AheadPlan::MoveWay(const std::string& path, AheadRest& rest) {
    const auto onTheWay = [&](const auto& folder) {
        return !folder->way.empty() && path.starts_with(folder->path == "/" ? "/" : folder->path + '/');
    };
    const auto found = std::find_if(m_folders.begin(), m_folders.end(), onTheWay);
    if (found == m_folders.end()) {
        return false;
    }
    PassFolders(found, rest);
    (*found)->way = path;
    m_currentFolder.reset();
    return true;
}

bool AheadPlan::AskFile(const std::string& path, Ahead part, AheadRest& rest) {
    if (IsAsleep()) {
        return true;
    }
    AheadFile& file = Find(path, rest);
    const AheadFolder& folder = *m_folders.front();
    if (folder.kind == FileSystemKind::Memory || folder.kind == FileSystemKind::Kernel ||
        IsKnownInMemory(folder, path)) {
        return true;
    }
    if (part == Ahead::Contents && !file.wasAsked) {
        WantContents(file);
    } else if (part == Ahead::Facts && folder.path.empty() && !file.isLookedFor) {
        WantFacts(file);
    }
    if (file.has >= Needed(folder, file)) {
        Keep(file, rest);
        return true;
    }
    // A disk answers: nobody waits for a reader that has not begun.
    if (folder.kind == FileSystemKind::Disk && !file.isBusy) {
        file.has = Ahead::Contents;
        return true;
    }
    return false;
}

void AheadPlan::Keep(AheadFile& file, AheadRest& rest) {
    if (!file.file) {
        return;
    }
    m_current.push_back(std::move(file.file));
    if (m_current.size() > m_limits.kept) {
        rest.files.push_back(std::move(m_current.front()));
        m_current.pop_front();
    }
}

// The file that is asked for is the first of the first folder then.
AheadFile& AheadPlan::Find(const std::string& path, AheadRest& rest) {
    for (auto folder = m_folders.begin(); folder != m_folders.end(); ++folder) {
        const std::string_view name = NameIn(**folder, path);
        if (name.empty()) {
            break;
        }
        auto& files = (*folder)->files;
        for (std::size_t i = (*folder)->passed; i < files.size(); ++i) {
            if (files[i].name == name) {
                PassFolders(folder, rest);
                PassFiles(**folder, i, rest);
                return files[i];
            }
        }
    }
    // Nobody told of it.
    PassFolders(
        std::find_if(m_folders.begin(), m_folders.end(), [](const auto& told) { return !told->isUntold; }),
        rest);
    const bool isInFirst = !m_folders.empty() && !NameIn(*m_folders.front(), path).empty();
    const FileSystemKind kind = m_sleep.MaySleep() ? FileSystemKind::Disk
                                : isInFirst        ? m_folders.front()->kind
                                                   : FileSystemKind::Share;
    m_folders.push_front(std::make_shared<AheadFolder>());
    AheadFolder& folder = *m_folders.front();
    folder.isUntold = true;
    folder.isListed = true;
    folder.kind = kind;
    folder.files.emplace_back().name = path;
    return folder.files.front();
}

void AheadPlan::PassFolders(Folders::iterator end, AheadRest& rest) {
    while (m_folders.begin() != end) {
        AheadFolder& folder = *m_folders.front();
        PassFiles(folder, folder.files.size(), rest);
        folder.isOver = true;
        Uncount(folder);
        if (folder.listing) {
            rest.listings.push_back(std::move(folder.listing));
        }
        m_folders.pop_front();
    }
}

void AheadPlan::Uncount(AheadFolder& folder) {
    if (std::exchange(folder.isCounted, false) && --m_listings <= m_limits.folders / 2) {
        m_isStuck = false;
    }
}

void AheadPlan::PassFiles(AheadFolder& folder, std::size_t end, AheadRest& rest) {
    for (; folder.passed < end; ++folder.passed) {
        PassFile(folder.files[folder.passed], rest);
    }
    folder.next = std::max(folder.next, folder.passed);
}

void AheadPlan::PassFile(AheadFile& file, AheadRest& rest) {
    if (std::exchange(file.isHeld, false) && --m_held <= m_limits.files / 2) {
        m_isStuck = false;
    }
    if (file.file) {
        rest.files.push_back(std::move(file.file));
    }
    const bool isUnsure = file.wanted == Ahead::Unsure || file.isUnsure;
    if (isUnsure && !file.wasAsked && !m_passedUnasked) {
        m_passedUnasked = true;
        Demote();
    }
}

void AheadPlan::WantFacts(AheadFile& file) {
    AheadFolder& folder = *m_folders.front();
    file.isLookedFor = true;
    folder.next = std::min(folder.next, folder.passed);
    m_isStuck = false;
}

// Files that are opened one after the other have others after them that will be. So as many are read ahead as
// have been opened without a gap, and no file at all where none is opened.
void AheadPlan::WantContents(AheadFile& file) {
    AheadFolder& folder = *m_folders.front();
    const bool isUnsure = file.wanted == Ahead::Unsure || file.isUnsure;
    file.wasAsked = true;
    file.wanted = Ahead::Contents;
    folder.next = std::min(folder.next, folder.passed);
    m_isStuck = false;
    if (!isUnsure) {
        return;
    }
    const bool isNext = !std::exchange(m_passedUnasked, false);
    m_streak = isNext ? std::clamp<std::size_t>(2 * m_streak, 1, m_limits.files) : 0;
    Promote();
}

// From the file after the current one on, as far as is known; `visit` ends it with false.
template <typename Visit> void AheadPlan::ForEachToCome(const Visit& visit) {
    for (const auto& folder : m_folders) {
        if (!folder->isListed) {
            return;
        }
        for (std::size_t i = folder->passed + (folder == m_folders.front() ? 1 : 0); i < folder->files.size();
             ++i) {
            if (!visit(*folder, i)) {
                return;
            }
        }
    }
}

void AheadPlan::Promote() {
    std::size_t left = m_streak;
    ForEachToCome([&](AheadFolder& folder, std::size_t i) {
        AheadFile& file = folder.files[i];
        if (left == 0) {
            return false;
        }
        if (file.wanted == Ahead::Unsure) {
            file.wanted = Ahead::Contents;
            file.isUnsure = true;
            folder.next = std::min(folder.next, i);
        }
        left -= file.isUnsure ? 1 : 0;
        return true;
    });
}

void AheadPlan::Demote() {
    ForEachToCome([](AheadFolder& folder, std::size_t i) {
        AheadFile& file = folder.files[i];
        if (file.wanted == Ahead::Unsure) {
            return false; // Those that were promoted come before it.
        }
        if (file.isUnsure && !file.isHeld) {
            file.wanted = Ahead::Unsure;
            file.isUnsure = false;
        }
        return true;
    });
}

bool AheadPlan::IsKnownInMemory(const AheadFolder& folder, const std::string& path) const {
    return folder.path.empty() && m_knownKind == FileSystemKind::Memory && !m_known.empty() &&
           FolderFromPath(path) == m_known;
}

bool AheadPlan::IsAwaited(const AheadJob& job) const {
    if (job.file == AheadJob::NoFile) {
        return job.folder == m_currentFolder;
    }
    return !m_folders.empty() && job.folder == m_folders.front() && job.file == job.folder->passed;
}

bool AheadPlan::NeedsReader() const {
    if (m_currentFolder && !m_currentFolder->isListed) {
        return !m_currentFolder->isBusy;
    }
    if (m_folders.empty() || m_folders.front()->passed >= m_folders.front()->files.size()) {
        return false;
    }
    return !m_folders.front()->files[m_folders.front()->passed].isBusy;
}

std::unique_ptr<FolderListing> AheadPlan::TakeListing(const std::string& path) {
    if (!m_currentFolder || m_currentFolder->path != path) {
        return nullptr;
    }
    Uncount(*m_currentFolder);
    return std::move(m_currentFolder->listing);
}

std::shared_ptr<FileAhead> AheadPlan::CurrentFile(const std::string& path) const {
    const auto found = std::find_if(m_current.begin(), m_current.end(),
                                    [&](const auto& file) { return file->Path() == path; });
    return found == m_current.end() ? nullptr : *found;
}

void AheadPlan::Clear(AheadRest& rest) {
    rest.files.insert(rest.files.end(), m_current.begin(), m_current.end());
    m_current.clear();
    m_currentFolder.reset();
    PassFolders(m_folders.end(), rest);
}

} // namespace quavernet::posix
