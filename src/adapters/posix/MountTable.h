// The mounted volumes of the system: which one holds a file, and which ones hold a user's data. Used by the
// file system adapter. Ours and not libmount's, which would bring three more libraries (libblkid, libselinux,
// libpcre2) for the one format of lines that is read here.
#pragma once

#include "adapters/posix/Descriptor.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quavernet::posix {

/// One line of /proc/self/mountinfo (man 5 proc_pid_mountinfo).
struct Mount {
    std::uint64_t id = 0;
    std::uint32_t major = 0; ///< Device, as stat tells it for most file systems.
    std::uint32_t minor = 0;
    std::string root;  ///< Folder of the file system that is mounted at the point; "/" unless bound.
    std::string point; ///< Unescaped.
    std::string type;  ///< "ext4", "tmpfs" and the like.
};

/// Lines that are malformed are passed over.
std::vector<Mount> ParseMountInfo(std::string_view text);

/// Whether a volume is one that a user keeps files on: no interface of the kernel, no memory, no part of the
/// running system.
bool HoldsUserData(const Mount& mount);

/// Whether a file system shows the kernel's state in place of files.
bool IsKernelInterface(std::string_view type);

class MountTable {
public:
    MountTable();

    /// Reads the table again if the system says that it has changed.
    void Refresh();

    /// Mount point of a file by the mount's number (0: unknown), else by device and path; "/" at least.
    std::string PointOf(std::uint64_t id, std::uint32_t major, std::uint32_t minor, const std::string& path);

    /// Whether a folder of this device belongs to the kernel's own file systems.
    bool IsKernelDevice(std::uint32_t major, std::uint32_t minor) const;

    /// "/" and the mount points that hold user data, each once.
    std::vector<std::string> UserVolumes() const;

private:
    void Read();

    Descriptor m_file;
    std::vector<Mount> m_mounts;
    std::unordered_map<std::uint64_t, std::string> m_points; ///< Mount points by number.
};

/// The rule behind PointOf where the kernel tells no mount number: among the mounts of the device the longest
/// one that the path lies under.
std::string PointByDevice(const std::vector<Mount>& mounts, std::uint32_t major, std::uint32_t minor,
                          std::string_view path);

} // namespace quavernet::posix
