// The walk over folders and their files. Made by the file system adapter for each scan.
#pragma once

#include "adapters/posix/Descriptor.h"
#include "adapters/posix/FolderListing.h"
#include "adapters/posix/MountTable.h"
#include "platform/FileSystemObject.h"

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <dirent.h>
#include <unistd.h>

namespace quavernet::posix {

class ReaderPool;

class PosixFolderWalk : public FolderWalk {
public:
    /// Takes the listings that `ahead` has read; it may be null.
    PosixFolderWalk(const std::string& folder, std::shared_ptr<MountTable> mounts,
                    std::shared_ptr<ReaderPool> ahead = nullptr);

    const std::string& Path() const override { return m_path; }
    FolderContents List(const std::string& folder) override;
    std::optional<FileFacts> File(const std::string& path) override;
    std::vector<SkippedEntry> TakeSkipped() override;

private:
    using Device = std::pair<std::uint32_t, std::uint32_t>; ///< Major and minor number.
    using Identity = std::pair<Device, std::uint64_t>;      ///< Device and inode.

    FolderListing Listing(const std::string& folder);
    bool MayEnter(const std::string& folder, const FolderListing& listing);
    bool MayEnterDevice(const Device& device);
    void AddEntry(const dirent64& entry, FolderContents& contents, std::vector<std::string>& links);
    void AddUnclear(const dirent64& entry, FolderContents& contents, std::vector<std::string>& links);
    bool LeadsInside(const char* link) const;
    bool MayRead(int folder, const std::string& name, const struct statx& facts) const;
    std::string FullPath(std::string_view name) const;
    void Note(const std::string& path, int error);

    std::string m_path;
    std::shared_ptr<MountTable> m_mounts;
    std::shared_ptr<ReaderPool> m_ahead;
    std::string m_folder; ///< The folder last listed; stays open, so that its files are asked by name alone.
    Descriptor m_open;
    const uid_t m_user = ::geteuid();
    Identity m_chosen; ///< The folder at which the walk started; it is entered first.
    std::set<Identity> m_entered;
    std::vector<std::pair<Device, bool>> m_devices; ///< Devices met, and whether they are walked.
    std::vector<SkippedEntry> m_skipped;
};

/// Facts as the logic sees them, from what the system tells.
FileFacts FactsOf(const std::string& path, const struct statx& facts, MountTable& mounts);

} // namespace quavernet::posix
