#include "adapters/posix/MountTable.h"

#include <gtest/gtest.h>

namespace quavernet::posix {
namespace {

TEST(ParseMountInfoTest, ALineGivesNumberDeviceRootPointAndType) {
    const auto mounts = ParseMountInfo(
        "36 35 98:5 /mnt1 /mnt2 rw,noatime master:1 propagate_from:2 - ext3 /dev/root rw,errors=continue\n");

    ASSERT_EQ(mounts.size(), 1u);
    EXPECT_EQ(mounts[0].id, 36u);
    EXPECT_EQ(mounts[0].major, 98u);
    EXPECT_EQ(mounts[0].minor, 5u);
    EXPECT_EQ(mounts[0].root, "/mnt1");
    EXPECT_EQ(mounts[0].point, "/mnt2");
    EXPECT_EQ(mounts[0].type, "ext3");
}

TEST(ParseMountInfoTest, EscapesOfBlanksTabsBreaksAndBackslashesAreUndone) {
    const auto mounts =
        ParseMountInfo("1 0 8:1 / /media/My\\040Music\\011a\\012b\\134c\\04 rw - ext4 /dev/sdb1 rw\n");

    ASSERT_EQ(mounts.size(), 1u);
    EXPECT_EQ(mounts[0].point, "/media/My Music\ta\nb\\c\\04");
}

TEST(ParseMountInfoTest, MalformedLinesArePassedOver) {
    EXPECT_TRUE(ParseMountInfo("").empty());
    EXPECT_TRUE(ParseMountInfo("\n\n").empty());
    EXPECT_TRUE(ParseMountInfo("1 0 8:1 / /x rw ext4 dev rw\n").empty()) << "no dash";
    EXPECT_TRUE(ParseMountInfo("x 0 8:1 / /x rw - ext4 dev rw\n").empty());
    EXPECT_TRUE(ParseMountInfo("1 0 8 / /x rw - ext4 dev rw\n").empty());
    EXPECT_TRUE(ParseMountInfo("1 0 8:y / /x rw - ext4 dev rw\n").empty());
    EXPECT_TRUE(ParseMountInfo("1 0 8:1 / /x rw shared:1 -\n").empty());
    EXPECT_EQ(ParseMountInfo("garbage\n1 0 8:1 / /x rw - ext4 dev rw").size(), 1u);
}

Mount MountOf(const std::string& point, const std::string& type) {
    Mount mount;
    mount.root = "/";
    mount.point = point;
    mount.type = type;
    return mount;
}

TEST(HoldsUserDataTest, DiscsSticksHomesAndNetworkVolumesDo) {
    EXPECT_TRUE(HoldsUserData(MountOf("/", "ext4")));
    EXPECT_TRUE(HoldsUserData(MountOf("/", "overlay")));
    EXPECT_TRUE(HoldsUserData(MountOf("/home", "btrfs")));
    EXPECT_TRUE(HoldsUserData(MountOf("/media/user/STICK", "vfat")));
    EXPECT_TRUE(HoldsUserData(MountOf("/run/media/user/STICK", "exfat")));
    EXPECT_TRUE(HoldsUserData(MountOf("/mnt/nas", "nfs4")));
    EXPECT_TRUE(HoldsUserData(MountOf("/mnt/share", "cifs")));
    EXPECT_TRUE(HoldsUserData(MountOf("/mnt/host", "fuse.sshfs")));
    EXPECT_TRUE(HoldsUserData(MountOf("/devices", "ext4")));
}

TEST(HoldsUserDataTest, TheKernelMemoryAndTheSystemsOwnPartsDoNot) {
    EXPECT_FALSE(HoldsUserData(MountOf("/proc", "proc")));
    EXPECT_FALSE(HoldsUserData(MountOf("/sys", "sysfs")));
    EXPECT_FALSE(HoldsUserData(MountOf("/dev/shm", "tmpfs")));
    EXPECT_FALSE(HoldsUserData(MountOf("/tmp", "tmpfs")));
    EXPECT_FALSE(HoldsUserData(MountOf("/snap/core/1", "squashfs")));
    EXPECT_FALSE(HoldsUserData(MountOf("/boot/efi", "vfat")));
    EXPECT_FALSE(HoldsUserData(MountOf("/etc/hosts", "ext4")));
    EXPECT_FALSE(HoldsUserData(MountOf("/var/lib/docker/overlay2/x", "overlay")));
    EXPECT_FALSE(HoldsUserData(MountOf("/run/user/1000/doc", "fuse.portal")));
}

TEST(PointByDeviceTest, TheLongestPointAboveThePathWins) {
    const auto mounts = ParseMountInfo("1 0 8:1 / / rw - ext4 a rw\n"
                                       "2 1 8:2 / /music rw - ext4 b rw\n"
                                       "3 1 8:2 /x /music/x rw - ext4 b rw\n"
                                       "4 1 8:2 /y /other rw - ext4 b rw\n");

    EXPECT_EQ(PointByDevice(mounts, 8, 1, "/home/a.mp3"), "/");
    EXPECT_EQ(PointByDevice(mounts, 8, 2, "/music/a.mp3"), "/music");
    EXPECT_EQ(PointByDevice(mounts, 8, 2, "/music/x/a.mp3"), "/music/x");
    EXPECT_EQ(PointByDevice(mounts, 8, 2, "/music/xy/a.mp3"), "/music");
    EXPECT_EQ(PointByDevice(mounts, 8, 2, "/other/a.mp3"), "/other");
    EXPECT_EQ(PointByDevice(mounts, 9, 9, "/nowhere/a.mp3"), "/");
}

TEST(MountTableTest, AnUnknownNumberFallsBackToTheDevice) {
    MountTable table;

    EXPECT_EQ(table.PointOf(0, 0xFFFFFF, 0xFFFFFF, "/some/file"), "/");
    EXPECT_FALSE(table.IsKernelDevice(0xFFFFFF, 0xFFFFFF));
}

} // namespace
} // namespace quavernet::posix
