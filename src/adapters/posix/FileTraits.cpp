#include "adapters/posix/FileTraits.h"

#include "adapters/posix/Descriptor.h"
#include "platform/RuntimeError.h"
#include "platform/WriteError.h"

#include <cerrno>
#include <climits>
#include <filesystem>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace quavernet::posix {

namespace {

// A path that is too long for the system to follow its links must not end in one.
bool EndsInPlainFile(const std::string& path) {
    const Descriptor opened = OpenPath(path, O_PATH | O_NOFOLLOW);
    struct stat facts {};
    return opened.IsOpen() && ::fstat(opened.Get(), &facts) == 0 && S_ISREG(facts.st_mode);
}

} // namespace

void Check(int error, const std::string& path) {
    if (error != 0) {
        const int number = IsDiskFull(error) ? ErrorNumber::DiskFull
                           : error == EIO    ? ErrorNumber::DeviceInputOutput
                                             : ErrorNumber::PathFileAccess;
        throw RuntimeError(number, ErrorText(error) + ": " + path);
    }
}

std::string RealPath(const std::string& path) {
    if (path.size() >= PATH_MAX) {
        Check(EndsInPlainFile(path) ? 0 : ENAMETOOLONG, path);
        return path;
    }
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(path, error);
    Check(error.value(), path);
    return target.string();
}

void CopyAttributes(int from, int to) {
    const ssize_t size = ::flistxattr(from, nullptr, 0);
    std::vector<char> names(size > 0 ? static_cast<std::size_t>(size) : 0);
    const ssize_t listed = names.empty() ? 0 : ::flistxattr(from, names.data(), names.size());
    for (ssize_t i = 0; i < listed;) {
        const char* name = names.data() + i;
        i += static_cast<ssize_t>(std::char_traits<char>::length(name)) + 1;
        const ssize_t length = ::fgetxattr(from, name, nullptr, 0);
        std::vector<char> value(length > 0 ? static_cast<std::size_t>(length) : 0);
        if (length >= 0 && ::fgetxattr(from, name, value.data(), value.size()) == length) {
            ::fsetxattr(to, name, value.data(), value.size(), 0);
        }
    }
}

// Only the superuser may give files away; others keep a group that they belong to. Bits that lend the owner's
// rights are for that owner only.
void KeepOwnerAndRights(int copy, const struct stat& facts, const std::string& path) {
    mode_t rights = facts.st_mode & 07777;
    if (::fchown(copy, facts.st_uid, facts.st_gid) != 0) {
        [[maybe_unused]] const int ignored = ::fchown(copy, static_cast<uid_t>(-1), facts.st_gid);
        rights &= static_cast<mode_t>(~(S_ISUID | S_ISGID));
    }
    Check(::fchmod(copy, rights) == 0 ? 0 : errno, path);
}

mode_t NewFileMask() {
    const mode_t mask = ::umask(077);
    ::umask(mask);
    return mask;
}

} // namespace quavernet::posix
