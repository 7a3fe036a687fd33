#include "adapters/posix/AheadPlan.h"

#include "platform/Paths.h"

#include <algorithm>
#include <utility>

namespace quavernet::posix {

namespace {

// Folders that are looked through for something to read.
constexpr std::size_t FoldersLookedAt = 64;

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
        folder->files.emplace_back(std::move(path), wanted);
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
    m_folders.back()->leadsTo = m_place;
}

void AheadPlan::NoteResult(std::uint64_t blocks, ToClose& toClose) {
    if (m_sleep.FallsAsleep(blocks)) {
        PassFolders(m_folders.end(), toClose);
        m_currentFolder.reset();
    }
}

// What a reader is to read of a file: less than is wanted where that would only cost. On a disk the facts
// cost no more than to ask for them ahead.
Ahead AheadPlan::Needed(const AheadFolder& folder, const AheadFile& file) const {
    if (folder.kind == FileSystemKind::Memory || folder.kind == FileSystemKind::Kernel) {
        return Ahead::Nothing;
    }
    if (file.want > Want::Unsure) {
        return Ahead::Contents;
    }
    const bool isAsked = file.want != Want::Nothing || file.isLookedFor;
    return isAsked && MayFactsHang(folder, file) ? Ahead::Facts : Ahead::Nothing;
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
        return AheadJob{folder, folder->next++, needed, folder->PathOf(file)};
    }
    return std::nullopt;
}

void AheadPlan::Finish(const AheadJob& job, AheadResult result, ToClose& toClose) {
    --m_busy;
    AheadFolder& folder = *job.folder;
    if (job.file == AheadJob::NoFile) {
        if (!folder.isOver) {
            FinishListing(job, result, toClose);
        } else if (result.listing) {
            toClose.listings.push_back(std::move(result.listing));
        }
        NoteResult(result.blocks, toClose);
        return;
    }
    AheadFile& file = folder.files[job.file];
    file.isBusy = false;
    if (folder.isOver || job.file < folder.passed) {
        if (result.file) {
            toClose.files.push_back(std::move(result.file));
        }
        NoteResult(result.blocks, toClose);
        return;
    }
    file.has = job.part;
    file.file = std::move(result.file);
    if (!file.file) {
        CountDown(file);
    }
    if (file.has < Needed(folder, file)) { // Its contents have come to be wanted meanwhile.
        folder.next = std::min(folder.next, job.file);
        m_isStuck = false;
    }
    if (folder.path.empty()) {
        m_known = FolderFromPath(file.name);
        m_knownKind = result.kind;
    }
    NoteResult(result.blocks, toClose);
}

void AheadPlan::FinishListing(const AheadJob& job, AheadResult& result, ToClose& toClose) {
    AheadFolder& folder = *job.folder;
    folder.isBusy = false;
    folder.isListed = true;
    folder.kind = result.kind;
    m_isStuck = false;
    const auto here = std::find(m_folders.begin(), m_folders.end(), job.folder);
    if (!folder.leadsTo.empty()) { // Its user has listed it already.
        if (result.listing) {
            toClose.listings.push_back(std::move(result.listing));
        }
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
    const std::string target = std::exchange(folder->leadsTo, {});
    auto first = result.subFolders.begin();
    bool isFound = false;
    if (folder->path == target) {
        folder->files = std::move(result.files);
    } else {
        first = std::find_if(first, result.subFolders.end(), [&](const std::string& path) {
            return target == path || target.starts_with(path + '/');
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
            (*below)->leadsTo = target;
        }
    }
}

bool AheadPlan::AskFolder(const std::string& path, ToClose& toClose) {
    m_place = path;
    m_isFolderAsked = true;
    if (IsAsleep()) {
        return true;
    }
    const auto isIt = [&](const auto& folder) { return folder->path == path; };
    auto found = std::find_if(m_folders.begin(), m_folders.end(), isIt);
    if (found == m_folders.end() && MoveOnTheWay(path, toClose)) {
        return true;
    }
    if (found == m_folders.end()) { // Reached by a link, or beyond what is listed ahead.
        const auto current = std::find(m_folders.begin(), m_folders.end(), m_currentFolder);
        if (current != m_folders.end()) {
            PassFolders(std::next(current), toClose);
        }
        found = m_folders.insert(m_folders.begin(), std::make_shared<AheadFolder>());
        (*found)->path = path;
        m_isStuck = false;
    }
    PassFolders(found, toClose);
    m_currentFolder = *found;
    return m_currentFolder->isListed;
}

// A plan that has just woken may still be on its way to where its user was. The user does not wait for that.
bool AheadPlan::MoveOnTheWay(const std::string& path, ToClose& toClose) {
    const auto onTheWay = [&](const auto& folder) {
        return !folder->leadsTo.empty() && path.starts_with(folder->path == "/" ? "/" : folder->path + '/');
    };
    const auto found = std::find_if(m_folders.begin(), m_folders.end(), onTheWay);
    if (found == m_folders.end()) {
        return false;
    }
    PassFolders(found, toClose);
    (*found)->leadsTo = path;
    m_currentFolder.reset();
    return true;
}

bool AheadPlan::AskFile(const std::string& path, Ahead part, ToClose& toClose) {
    m_isFolderAsked = false;
    if (IsAsleep()) {
        return true;
    }
    AheadFile& file = Find(path, toClose);
    const AheadFolder& folder = *m_folders.front();
    if (folder.kind == FileSystemKind::Memory || folder.kind == FileSystemKind::Kernel ||
        IsKnownInMemory(folder, path)) {
        return true;
    }
    if (part == Ahead::Contents && file.want != Want::Opened) {
        NoteOpened(file);
    } else if (part == Ahead::Facts && folder.path.empty() && !file.isLookedFor) {
        NoteLookedFor(file);
    }
    if (file.has >= Needed(folder, file)) {
        Keep(file, toClose);
        return true;
    }
    // A disk answers: nobody waits for a reader that has not begun.
    if (folder.kind == FileSystemKind::Disk && !file.isBusy) {
        file.has = Ahead::Contents;
        return true;
    }
    return false;
}

void AheadPlan::Keep(AheadFile& file, ToClose& toClose) {
    if (!file.file) {
        return;
    }
    m_kept.push_back(std::move(file.file));
    if (m_kept.size() > m_limits.kept) {
        toClose.files.push_back(std::move(m_kept.front()));
        m_kept.pop_front();
    }
}

// The file that is asked for is the first of the first folder then.
AheadFile& AheadPlan::Find(const std::string& path, ToClose& toClose) {
    for (auto folder = m_folders.begin(); folder != m_folders.end(); ++folder) {
        const std::string_view name = (*folder)->NameOf(path);
        if (name.empty()) {
            break;
        }
        auto& files = (*folder)->files;
        for (std::size_t i = (*folder)->passed; i < files.size(); ++i) {
            if (files[i].name == name) {
                PassFolders(folder, toClose);
                PassFiles(**folder, i, toClose);
                return files[i];
            }
        }
    }
    // Nobody told of it.
    PassFolders(std::find_if(m_folders.begin(), m_folders.end(),
                             [](const auto& told) { return !told->isForOneFile; }),
                toClose);
    const bool isInFirst = !m_folders.empty() && !m_folders.front()->NameOf(path).empty();
    const FileSystemKind kind = m_sleep.MaySleep() ? FileSystemKind::Disk
                                : isInFirst        ? m_folders.front()->kind
                                                   : FileSystemKind::Share;
    m_folders.push_front(std::make_shared<AheadFolder>());
    AheadFolder& folder = *m_folders.front();
    folder.isForOneFile = true;
    folder.isListed = true;
    folder.kind = kind;
    folder.files.emplace_back(path, Ahead::Nothing);
    return folder.files.front();
}

void AheadPlan::PassFolders(Folders::iterator end, ToClose& toClose) {
    while (m_folders.begin() != end) {
        AheadFolder& folder = *m_folders.front();
        PassFiles(folder, folder.files.size(), toClose);
        folder.isOver = true;
        Uncount(folder);
        if (folder.listing) {
            toClose.listings.push_back(std::move(folder.listing));
        }
        m_folders.pop_front();
    }
}

void AheadPlan::Uncount(AheadFolder& folder) {
    if (std::exchange(folder.isCounted, false) && --m_listings <= m_limits.folders / 2) {
        m_isStuck = false;
    }
}

void AheadPlan::PassFiles(AheadFolder& folder, std::size_t end, ToClose& toClose) {
    for (; folder.passed < end; ++folder.passed) {
        PassFile(folder.files[folder.passed], toClose);
    }
    folder.next = std::max(folder.next, folder.passed);
}

void AheadPlan::CountDown(AheadFile& file) {
    if (std::exchange(file.isHeld, false) && --m_held <= m_limits.files / 2) {
        m_isStuck = false;
    }
}

void AheadPlan::PassFile(AheadFile& file, ToClose& toClose) {
    CountDown(file);
    if (file.file) {
        toClose.files.push_back(std::move(file.file));
    }
    if (file.IsUncertain() && !m_isRowBroken) {
        m_isRowBroken = true;
        TakeGuessesBack();
    }
}

void AheadPlan::NoteLookedFor(AheadFile& file) {
    AheadFolder& folder = *m_folders.front();
    file.isLookedFor = true;
    folder.next = std::min(folder.next, folder.passed);
    m_isStuck = false;
}

// Files that are opened one after the other have others after them that will be. So as many are read ahead as
// have been opened without a gap, and no file at all where none is opened.
void AheadPlan::NoteOpened(AheadFile& file) {
    AheadFolder& folder = *m_folders.front();
    const bool wasUncertain = file.IsUncertain();
    file.want = Want::Opened;
    folder.next = std::min(folder.next, folder.passed);
    m_isStuck = false;
    if (!wasUncertain) {
        return;
    }
    const bool isNext = !std::exchange(m_isRowBroken, false);
    m_guesses = isNext ? std::clamp<std::size_t>(2 * m_guesses, 1, m_limits.files) : 0;
    Guess();
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

void AheadPlan::Guess() {
    std::size_t left = m_guesses;
    ForEachToCome([&](AheadFolder& folder, std::size_t i) {
        AheadFile& file = folder.files[i];
        if (left == 0) {
            return false;
        }
        if (file.want == Want::Unsure) {
            file.want = Want::Guessed;
            folder.next = std::min(folder.next, i);
        }
        left -= file.want == Want::Guessed ? 1 : 0;
        return true;
    });
}

void AheadPlan::TakeGuessesBack() {
    ForEachToCome([](AheadFolder& folder, std::size_t i) {
        AheadFile& file = folder.files[i];
        if (file.want == Want::Unsure) {
            return false; // The guesses come before it.
        }
        if (file.want == Want::Guessed && !file.isHeld) {
            file.want = Want::Unsure;
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
    if (m_isFolderAsked) {
        return m_currentFolder && !m_currentFolder->isListed && !m_currentFolder->isBusy;
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
    const auto found =
        std::find_if(m_kept.begin(), m_kept.end(), [&](const auto& file) { return file->Path() == path; });
    return found == m_kept.end() ? nullptr : *found;
}

void AheadPlan::Clear(ToClose& toClose) {
    toClose.files.insert(toClose.files.end(), m_kept.begin(), m_kept.end());
    m_kept.clear();
    m_currentFolder.reset();
    PassFolders(m_folders.end(), toClose);
}

} // namespace quavernet::posix
