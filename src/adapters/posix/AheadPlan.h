// What is to be read ahead for one piece of work: its folders and files in the order in which they will be
// asked for, how far its user has come, and what has been read. ReaderPool keeps one for each and guards it.
#pragma once

#include "adapters/posix/AheadFolder.h"
#include "adapters/posix/AheadSleep.h"
#include "platform/ReadAhead.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace quavernet::posix {

/// One thing to read, for one reader.
struct AheadJob {
    static constexpr std::size_t NoFile = static_cast<std::size_t>(-1);

    std::shared_ptr<AheadFolder> folder;
    std::size_t file = NoFile; ///< NoFile: the folder's listing.
    Ahead part = Ahead::Nothing;
    std::string path;
};

/// What a reader brings back.
struct AheadResult {
    std::unique_ptr<FolderListing> listing;
    FileSystemKind kind = FileSystemKind::Share;
    std::vector<AheadFile> files;
    std::vector<std::string> subFolders; ///< Those that the walk enters.
    std::shared_ptr<FileAhead> file;
    std::uint64_t blocks = 0; ///< That the disk had to give for it.
};

/// What nobody needs any more. To close a file may hang, so the readers do it.
struct ToClose {
    std::vector<std::shared_ptr<FileAhead>> files;
    std::vector<std::unique_ptr<FolderListing>> listings;

    bool IsEmpty() const { return files.empty() && listings.empty(); }
};

class AheadPlan {
public:
    /// How much is read before its user comes to it.
    struct Limits {
        std::size_t files = 128;
        std::size_t folders = 32;
        std::size_t kept = 1; ///< Files that stay when their user has asked for the next.
    };

    /// `maySleep`: all of it lies on a disk, so that nothing has to be read ahead while nothing comes from
    /// it.
    AheadPlan(WalkAhead walk, bool maySleep, const Limits& limits);
    AheadPlan(std::vector<std::string> paths, Ahead wanted, const Limits& limits);

    /// The questions that a reader asks while it lists a folder; empty in a plan of files.
    const WalkAhead& Walk() const { return m_walk; }

    /// A plan that sleeps has nothing to read, and is ready for whatever its user asks for.
    bool IsAsleep() const { return m_sleep.IsAsleep(); }

    /// As AheadSleep tells.
    bool SleepsOn() { return m_sleep.SleepsOn(); }
    void NoteBlocks(const std::function<std::uint64_t()>& blocks, bool isFolder);

    /// The next thing to read, or nothing for now.
    std::optional<AheadJob> NextJob();
    void Finish(const AheadJob& job, AheadResult result, ToClose& toClose);

    /// Whether NextJob may have something again, since it had nothing.
    bool HasRoom() const { return !m_isStuck; }

    /// Its user has come to a folder or a file: what is before it is over. True if that is ready.
    bool AskFolder(const std::string& path, ToClose& toClose);
    bool AskFile(const std::string& path, Ahead part, ToClose& toClose);

    /// Whether its user waits for this.
    bool IsAwaited(const AheadJob& job) const;

    /// Whether its user has come to something that no reader is at.
    bool NeedsReader() const;

    /// What was asked for last, if it is that and was read.
    std::unique_ptr<FolderListing> TakeListing(const std::string& path);
    std::shared_ptr<FileAhead> CurrentFile(const std::string& path) const;

    /// Gives up everything.
    void Clear(ToClose& toClose);

    /// Readers that work for it.
    std::size_t BusyReaders() const { return m_busy; }

private:
    using Folders = std::list<std::shared_ptr<AheadFolder>>;

    Ahead Needed(const AheadFolder& folder, const AheadFile& file) const;
    bool MayFactsHang(const AheadFolder& folder, const AheadFile& file) const;
    std::optional<AheadJob> NextFile(const std::shared_ptr<AheadFolder>& folder);
    void PassFolders(Folders::iterator end, ToClose& toClose);
    void PassFiles(AheadFolder& folder, std::size_t end, ToClose& toClose);
    void PassFile(AheadFile& file, ToClose& toClose);
    void CountDown(AheadFile& file);
    void Uncount(AheadFolder& folder);
    void Keep(AheadFile& file, ToClose& toClose);
    AheadFile& Find(const std::string& path, ToClose& toClose);
    void NoteLookedFor(AheadFile& file);
    void NoteOpened(AheadFile& file);
    void Guess();
    void TakeGuessesBack();
    template <typename Visit> void ForEachToCome(const Visit& visit);
    void FinishListing(const AheadJob& job, AheadResult& result, ToClose& toClose);
    void FinishOnTheWay(Folders::iterator here, AheadResult& result);
    void NoteResult(std::uint64_t blocks, ToClose& toClose);
    bool MoveOnTheWay(const std::string& path, ToClose& toClose);
    bool IsKnownInMemory(const AheadFolder& folder, const std::string& path) const;

    WalkAhead m_walk;
    Limits m_limits;
    Folders m_folders; ///< In the walk's order; the first is where its user is.
    std::shared_ptr<AheadFolder> m_currentFolder;
    std::deque<std::shared_ptr<FileAhead>> m_kept; ///< Files that were asked for last.
    std::string m_known; ///< The folder of the file that was read last, in a plan of files.
    FileSystemKind m_knownKind = FileSystemKind::Share; ///< Its kind.
    std::size_t m_held = 0;                             ///< Files with contents, or on their way to them.
    std::size_t m_listings = 0; ///< Folders listed, or on their way to it, that its user has not come to.
    std::size_t m_busy = 0;     ///< Readers that work for it.
    std::size_t m_guesses = 0;  ///< How many unsure files are read ahead.
    bool m_isRowBroken = true; ///< No unsure file was opened, or one was passed over since the last that was.
    bool m_isStuck = false;

    AheadSleep m_sleep;
    std::string m_place;          ///< The folder that was asked for last: where a plan that wakes goes to.
    bool m_isFolderAsked = false; ///< And since then no file.
};

} // namespace quavernet::posix
