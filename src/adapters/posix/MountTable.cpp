#include "adapters/posix/MountTable.h"

#include <algorithm>
#include <array>
#include <charconv>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::posix {

namespace {

constexpr std::array KernelTypes{
    std::string_view("proc"),      std::string_view("sysfs"),      std::string_view("cgroup"),
    std::string_view("cgroup2"),   std::string_view("devpts"),     std::string_view("devtmpfs"),
    std::string_view("debugfs"),   std::string_view("tracefs"),    std::string_view("securityfs"),
    std::string_view("pstore"),    std::string_view("efivarfs"),   std::string_view("bpf"),
    std::string_view("mqueue"),    std::string_view("hugetlbfs"),  std::string_view("configfs"),
    std::string_view("fusectl"),   std::string_view("nsfs"),       std::string_view("binfmt_misc"),
    std::string_view("selinuxfs"), std::string_view("rpc_pipefs"), std::string_view("nfsd"),
};

// Real files, but the system's: memory, program images, layers of containers, mount triggers.
constexpr std::array SystemTypes{
    std::string_view("tmpfs"),         std::string_view("ramfs"),       std::string_view("rootfs"),
    std::string_view("overlay"),       std::string_view("squashfs"),    std::string_view("autofs"),
    std::string_view("erofs"),         std::string_view("fuse.portal"), std::string_view("fuse.lxcfs"),
    std::string_view("fuse.snapfuse"),
};

constexpr std::array SystemFolders{
    std::string_view("/boot"), std::string_view("/dev"),  std::string_view("/efi"),
    std::string_view("/etc"),  std::string_view("/proc"), std::string_view("/run"),
    std::string_view("/snap"), std::string_view("/sys"),  std::string_view("/var/lib"),
};

bool LiesUnder(std::string_view path, std::string_view folder) {
    return folder == "/" || path == folder ||
           (path.size() > folder.size() && path.starts_with(folder) && path[folder.size()] == '/');
}

bool IsOctal(char c) {
    return c >= '0' && c <= '7';
}

// Blanks, tabs, line breaks and backslashes stand in the table as a backslash and three octal digits.
std::string Unescape(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size() && IsOctal(text[i + 1]) && IsOctal(text[i + 2]) &&
            IsOctal(text[i + 3])) {
            const int code = (text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 + (text[i + 3] - '0');
            result += static_cast<char>(code);
            i += 3;
        } else {
            result += text[i];
        }
    }
    return result;
}

template <typename Number> bool ReadNumber(std::string_view text, Number& number) {
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> parts;
    while (!text.empty()) {
        const auto end = std::min(text.find(separator), text.size());
        parts.push_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return parts;
}

bool ParseLine(std::string_view line, Mount& mount) {
    const auto fields = Split(line, ' ');
    const auto dash = std::find(fields.begin(), fields.end(), "-");
    if (fields.size() < 8 || fields.end() - dash < 2) {
        return false;
    }
    const auto device = Split(fields[2], ':');
    if (device.size() != 2 || !ReadNumber(fields[0], mount.id) || !ReadNumber(device[0], mount.major) ||
        !ReadNumber(device[1], mount.minor)) {
        return false;
    }
    mount.root = Unescape(fields[3]);
    mount.point = Unescape(fields[4]);
    mount.type = dash[1];
    return true;
}

bool IsFolder(const std::string& path) {
    struct stat facts {};
    return ::stat(path.c_str(), &facts) == 0 && S_ISDIR(facts.st_mode);
}

std::string ReadAll(int fd) {
    std::string text;
    std::array<char, 8192> buffer{};
    ::lseek(fd, 0, SEEK_SET);
    for (ssize_t got = 0; (got = ::read(fd, buffer.data(), buffer.size())) > 0;) {
        text.append(buffer.data(), static_cast<std::size_t>(got));
    }
    return text;
}

} // namespace

std::vector<Mount> ParseMountInfo(std::string_view text) {
    std::vector<Mount> mounts;
    for (const std::string_view line : Split(text, '\n')) {
        Mount mount;
        if (ParseLine(line, mount)) {
            mounts.push_back(std::move(mount));
        }
    }
    return mounts;
}

bool IsKernelInterface(std::string_view type) {
    return std::find(KernelTypes.begin(), KernelTypes.end(), type) != KernelTypes.end();
}

bool HoldsUserData(const Mount& mount) {
    if (mount.point == "/") {
        return true;
    }
    if (IsKernelInterface(mount.type) ||
        std::find(SystemTypes.begin(), SystemTypes.end(), mount.type) != SystemTypes.end()) {
        return false;
    }
    if (LiesUnder(mount.point, "/run/media")) {
        return true; // Where a desktop mounts sticks and discs.
    }
    return std::none_of(SystemFolders.begin(), SystemFolders.end(),
                        [&](std::string_view folder) { return LiesUnder(mount.point, folder); });
}

MountTable::MountTable() : m_file(OpenPath("/proc/self/mountinfo", O_RDONLY)) {
    Read();
}

void MountTable::Refresh() {
    pollfd change{m_file.Get(), POLLPRI, 0};
    if (m_file.IsOpen() && ::poll(&change, 1, 0) > 0) {
        Read();
    }
}

void MountTable::Read() {
    m_mounts = m_file.IsOpen() ? ParseMountInfo(ReadAll(m_file.Get())) : std::vector<Mount>();
    m_points.clear();
    for (const Mount& mount : m_mounts) {
        m_points[mount.id] = mount.point;
    }
}

std::string MountTable::PointOf(std::uint64_t id, std::uint32_t major, std::uint32_t minor,
                                const std::string& path) {
    if (const auto found = m_points.find(id); found != m_points.end()) {
        return found->second;
    }
    Refresh();
    if (const auto found = m_points.find(id); found != m_points.end()) {
        return found->second;
    }
    return PointByDevice(m_mounts, major, minor, path);
}

bool MountTable::IsKernelDevice(std::uint32_t major, std::uint32_t minor) const {
    return std::any_of(m_mounts.begin(), m_mounts.end(), [&](const Mount& mount) {
        return mount.major == major && mount.minor == minor && IsKernelInterface(mount.type);
    });
}

std::vector<std::string> MountTable::UserVolumes() const {
    std::vector<std::string> volumes{"/"};
    for (const Mount& mount : m_mounts) {
        const bool known = std::find(volumes.begin(), volumes.end(), mount.point) != volumes.end();
        // A single file can be a mount point too. Only bound ones are asked: a dead network volume would
        // keep the question waiting.
        if (!known && HoldsUserData(mount) && (mount.root == "/" || IsFolder(mount.point))) {
            volumes.push_back(mount.point);
        }
    }
    return volumes;
}

std::string PointByDevice(const std::vector<Mount>& mounts, std::uint32_t major, std::uint32_t minor,
                          std::string_view path) {
    std::string point = "/";
    for (const Mount& mount : mounts) {
        if (mount.major == major && mount.minor == minor && LiesUnder(path, mount.point) &&
            mount.point.size() >= point.size()) {
            point = mount.point;
        }
    }
    return point;
}

} // namespace quavernet::posix
