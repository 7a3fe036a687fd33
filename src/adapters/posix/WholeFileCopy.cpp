#include "adapters/posix/WholeFileCopy.h"

#include "adapters/posix/FileTraits.h"
#include "adapters/posix/TemporaryCopy.h"

#include <array>
#include <cerrno>
#include <span>

#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::posix {

namespace {

int CopyBytes(int from, TemporaryCopy& to) {
    std::array<std::byte, 65536> buffer{};
    for (;;) {
        const ssize_t got = ::read(from, buffer.data(), buffer.size());
        if (got == 0) {
            return 0;
        }
        if (got < 0) {
            if (errno == EINTR) {
                continue;
            }
            return errno;
        }
        if (const int error = to.Append(std::span(buffer).first(static_cast<std::size_t>(got))); error != 0) {
            return error;
        }
    }
}

// The source's rights, as far as a new file of the user gets them, but the owner may always write: the copy
// of a template lives on.
int KeepRights(int from, int to) {
    struct stat facts {};
    const bool kept = ::fstat(from, &facts) == 0 &&
                      ::fchmod(to, (facts.st_mode & 0777 & ~NewFileMask()) | S_IRUSR | S_IWUSR) == 0;
    return kept ? 0 : errno;
}

} // namespace

int CopyWholeFile(const Descriptor& source, const std::string& target) {
    TemporaryCopy copy;
    int error = copy.Begin(target);
    if (error == 0) {
        error = CopyBytes(source.Get(), copy);
    }
    if (error == 0) {
        error = KeepRights(source.Get(), copy.Number());
    }
    return error == 0 ? copy.MoveToFreePlace() : error;
}

} // namespace quavernet::posix
