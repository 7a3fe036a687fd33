#include "adapters/posix/FileSystemKind.h"

#include <algorithm>
#include <array>

#include <linux/magic.h>
#include <sys/vfs.h>

namespace quavernet::posix {

namespace {

// Types that <linux/magic.h> does not name.
constexpr std::uint32_t ExfatMagic = 0x2011BAB0;
constexpr std::uint32_t Ntfs3Magic = 0x7366746E;
constexpr std::uint32_t UdfMagic = 0x15013346;
constexpr std::uint32_t HfsPlusMagic = 0x482B;
constexpr std::uint32_t JfsMagic = 0x3153464A;
constexpr std::uint32_t MqueueMagic = 0x19800202;
constexpr std::uint32_t ConfigfsMagic = 0x62656570;
constexpr std::uint32_t FusectlMagic = 0x65735543;

constexpr std::array<std::uint32_t, 2> Memory{TMPFS_MAGIC, RAMFS_MAGIC};

constexpr std::array<std::uint32_t, 16> Disks{EXT4_SUPER_MAGIC,  XFS_SUPER_MAGIC,
                                              BTRFS_SUPER_MAGIC, F2FS_SUPER_MAGIC,
                                              MSDOS_SUPER_MAGIC, ExfatMagic,
                                              Ntfs3Magic,        ISOFS_SUPER_MAGIC,
                                              UdfMagic,          HfsPlusMagic,
                                              JfsMagic,          REISERFS_SUPER_MAGIC,
                                              NILFS_SUPER_MAGIC, OVERLAYFS_SUPER_MAGIC,
                                              SQUASHFS_MAGIC,    EROFS_SUPER_MAGIC_V1};

constexpr std::array<std::uint32_t, 20> Kernel{
    PROC_SUPER_MAGIC, SYSFS_MAGIC,    CGROUP_SUPER_MAGIC, CGROUP2_SUPER_MAGIC, DEVPTS_SUPER_MAGIC,
    DEBUGFS_MAGIC,    TRACEFS_MAGIC,  SECURITYFS_MAGIC,   PSTOREFS_MAGIC,      EFIVARFS_MAGIC,
    BPF_FS_MAGIC,     MqueueMagic,    HUGETLBFS_MAGIC,    ConfigfsMagic,       FusectlMagic,
    NSFS_MAGIC,       BINFMTFS_MAGIC, SELINUX_MAGIC,      SMACK_MAGIC,         SOCKFS_MAGIC};

template <std::size_t N> bool Holds(const std::array<std::uint32_t, N>& types, std::uint32_t type) {
    return std::find(types.begin(), types.end(), type) != types.end();
}

FileSystemKind KindOf(const struct statfs& facts) {
    const auto type = static_cast<std::uint32_t>(facts.f_type);
    if (Holds(Memory, type)) {
        return FileSystemKind::Memory;
    }
    if (Holds(Disks, type)) {
        return FileSystemKind::Disk;
    }
    return Holds(Kernel, type) ? FileSystemKind::Kernel : FileSystemKind::Share;
}

} // namespace

FileSystemKind KindOfFileSystem(int fd) {
    struct statfs facts {};
    return ::fstatfs(fd, &facts) == 0 ? KindOf(facts) : FileSystemKind::Share;
}

} // namespace quavernet::posix
