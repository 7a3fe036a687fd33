// What is to be read ahead for one piece of work: its folders and files in the order in which they will be
// asked for, how far its user has come, and what has been read. ReaderPool keeps one for each and guards it.
#pragma once

#include "adapters/posix/AheadSleep.h"
#include "adapters/posix/FileAhead.h"
#include "adapters/posix/FileSystemKind.h"
#include "adapters/posix/FolderListing.h"
#include "platform/ReadAhead.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quavernet::posix {

struct AheadFile {
    std::string name; ///< In its folder; the whole path in a plan of files.
    Ahead wanted = Ahead::Nothing;
    Ahead has = Ahead::Nothing; ///< Facts or Contents, once they have been read.
    bool isBusy = false;        ///< A reader is at it.
    bool isHeld = false;        ///< Counted among those whose contents are held.
    bool isUnsure = false;      ///< Its contents are wanted because files before it were opened.
    bool wasAsked = false;      ///< For its contents.
    bool isLookedFor = false;   ///< Its user has asked for its facts, in a plan of files.
    std::shared_ptr<FileAhead> file;
};

struct AheadFolder {
    std::string path; ///< Empty: the names are whole paths.
    std::string way;  ///< Not empty: what comes before this folder is over, so this one is only on the way.
    FileSystemKind kind = FileSystemKind::Share;
    bool isUntold = false; ///< For one file that was asked for and is in no other.
    bool isListed = false;
    bool isBusy = false;
    bool isCounted = false;                 ///< Among those that are listed ahead.
    bool isOver = false;                    ///< Its user has gone on.
    std::unique_ptr<FolderListing> listing; ///< Until its user takes it.
    std::vector<AheadFile> files;
    std::size_t next = 0;   ///< No reader has to look at those before it.
    std::size_t passed = 0; ///< Those before it are over.
};

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

/// What nobody needs any more. Closing a file may hang, so the readers do it.
struct AheadRest {
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
    bool PassesAsleep() { return m_sleep.PassesFile(); }
    void NoteBlocks(const std::function<std::uint64_t()>& blocks, bool isFolder);

    /// The next thing to read, or nothing for now.
    std::optional<AheadJob> NextJob();
    void Finish(const AheadJob& job, AheadResult result, AheadRest& rest);

    /// Whether NextJob may have something again, since it had nothing.
    bool HasRoom() const { return !m_isStuck; }

    /// Its user has come to a folder or a file: what is before it is over. True if that is ready.
    bool AskFolder(const std::string& path, AheadRest& rest);
    bool AskFile(const std::string& path, Ahead part, AheadRest& rest);

    /// Whether its user waits for this.
    bool IsAwaited(const AheadJob& job) const;

    /// Whether its user has come to something that no reader is at.
    bool NeedsReader() const;

    /// What was asked for last, if it is that and was read.
    std::unique_ptr<FolderListing> TakeListing(const std::string& path);
    std::shared_ptr<FileAhead> CurrentFile(const std::string& path) const;

    /// Gives up everything.
    void Clear(AheadRest& rest);

    /// Readers that work for it.
    std::size_t BusyReaders() const { return m_busy; }

private:
    using Folders = std::list<std::shared_ptr<AheadFolder>>;

    Ahead Needed(const AheadFolder& folder, const AheadFile& file) const;
    bool MayFactsHang(const AheadFolder& folder, const AheadFile& file) const;
    std::optional<AheadJob> NextFile(const std::shared_ptr<AheadFolder>& folder);
    void PassFolders(Folders::iterator end, AheadRest& rest);
    void PassFiles(AheadFolder& folder, std::size_t end, AheadRest& rest);
    void PassFile(AheadFile& file, AheadRest& rest);
    void Uncount(AheadFolder& folder);
    void Keep(AheadFile& file, AheadRest& rest);
    AheadFile& Find(const std::string& path, AheadRest& rest);
    void WantFacts(AheadFile& file);
    void WantContents(AheadFile& file);
    void Promote();
    void Demote();
    template <typename Visit> void ForEachToCome(const Visit& visit);
    void FinishListing(const AheadJob& job, AheadResult& result, AheadRest& rest);
    void FinishOnTheWay(Folders::iterator here, AheadResult& result);
    void NoteResult(std::uint64_t blocks, AheadRest& rest);
    bool MoveWay(const std::string& path, AheadRest& rest);
    bool IsKnownInMemory(const AheadFolder& folder, const std::string& path) const;

    WalkAhead m_walk;
    Limits m_limits;
    Folders m_folders; ///< In the walk's order; the first is where its user is.
    std::shared_ptr<AheadFolder> m_currentFolder;
    std::deque<std::shared_ptr<FileAhead>> m_current; ///< Files that were asked for last.
    std::string m_known; ///< The folder of the file that was read last, in a plan of files.
    FileSystemKind m_knownKind = FileSystemKind::Share; ///< Its kind.
    std::size_t m_held = 0;                             ///< Files with contents, or on their way to them.
    std::size_t m_listings = 0;  ///< Folders listed, or on their way to it, that its user has not come to.
    std::size_t m_busy = 0;      ///< Readers that work for it.
    std::size_t m_streak = 0;    ///< How many unsure files are read ahead.
    bool m_passedUnasked = true; ///< No file was opened, or an unsure one was passed since the last that was.
    bool m_isStuck = false;

    AheadSleep m_sleep;
    std::string m_place; ///< The folder that was asked for last.
};

} // namespace quavernet::posix
