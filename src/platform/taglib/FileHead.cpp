#include "platform/taglib/FileHead.h"

#include "platform/RuntimeError.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace quavernet {

namespace {

constexpr std::size_t CopyBlock = std::size_t{1} << 20;

void Check(bool success, const std::string& path) {
    if (!success) {
        throw RuntimeError(ErrorNumber::PathFileAccess, std::generic_category().message(errno) + ": " + path);
    }
}

struct stat FactsOf(const BinaryFile& file, const std::string& path) {
    struct stat facts {};
    Check(::fstat(file.Descriptor(), &facts) == 0, path);
    return facts;
}

void KeepTimes(int descriptor, const struct stat& facts) {
    const struct timespec times[2] = {facts.st_atim, facts.st_mtim};
    ::futimens(descriptor, times); // A file system without times has none to keep.
}

// Access lists and the user's own attributes, as far as the file system takes them.
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

// A file of a name of its own that vanishes unless it is moved to its place.
class TemporaryCopy {
public:
    explicit TemporaryCopy(const std::filesystem::path& folder)
        : m_path((folder / ".quavernet-XXXXXX").string()),
          m_descriptor(::mkostemp(m_path.data(), O_CLOEXEC)) {
        Check(m_descriptor >= 0, folder.string());
    }
    ~TemporaryCopy() {
        ::close(m_descriptor);
        if (!m_moved) {
            ::unlink(m_path.c_str());
        }
    }
    TemporaryCopy(const TemporaryCopy&) = delete;
    TemporaryCopy& operator=(const TemporaryCopy&) = delete;

    int Descriptor() const { return m_descriptor; }

    void Append(std::span<const std::byte> bytes) {
        while (!bytes.empty()) {
            const ssize_t count = ::write(m_descriptor, bytes.data(), bytes.size());
            Check(count >= 0 || errno == EINTR, m_path);
            bytes = bytes.subspan(count > 0 ? static_cast<std::size_t>(count) : 0);
        }
    }

    void MoveTo(const std::string& target) {
        Check(::fsync(m_descriptor) == 0, m_path);
        Check(::rename(m_path.c_str(), target.c_str()) == 0, target);
        m_moved = true;
    }

private:
    std::string m_path;
    int m_descriptor;
    bool m_moved = false;
};

void AppendRest(TemporaryCopy& copy, const BinaryFile& file, std::uint64_t offset, const std::string& path) {
    std::vector<std::byte> block(static_cast<std::size_t>(
        std::min<std::uint64_t>(CopyBlock, file.Size() - std::min(offset, file.Size()))));
    while (offset < file.Size()) {
        const std::size_t count = file.ReadAt(offset, block);
        errno = EIO;
        Check(count > 0, path); // The file was cut while it was copied.
        copy.Append(std::span(block).first(count));
        offset += count;
    }
}

void SyncFolder(const std::filesystem::path& folder) {
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

} // namespace

void OverwriteHead(BinaryFile& file, std::span<const std::byte> oldHead, std::span<const std::byte> head) {
    const auto first = std::mismatch(head.begin(), head.end(), oldHead.begin());
    if (first.first == head.end()) {
        return;
    }
    const auto begin = static_cast<std::size_t>(first.first - head.begin());
    std::size_t end = head.size();
    while (head[end - 1] == oldHead[end - 1]) {
        --end;
    }
    const struct stat facts = FactsOf(file, "");
    try {
        file.WriteAt(begin, head.subspan(begin, end - begin));
    } catch (const RuntimeError&) {
        Skip([&] { file.WriteAt(begin, oldHead.subspan(begin, end - begin)); });
        throw;
    }
    KeepTimes(file.Descriptor(), facts);
    ::fsync(file.Descriptor());
}

void ReplaceHead(const std::string& path, const BinaryFile& file, std::uint64_t oldSize,
                 std::span<const std::byte> head) {
    std::error_code error;
    const std::filesystem::path target = std::filesystem::canonical(path, error);
    errno = error.value();
    Check(!error, path);
    const struct stat facts = FactsOf(file, path);

    TemporaryCopy copy(target.parent_path());
    copy.Append(head);
    AppendRest(copy, file, oldSize, path);
    // Only the superuser may give files away; the owner of the copy is the one who saves otherwise.
    [[maybe_unused]] const int ignored = ::fchown(copy.Descriptor(), facts.st_uid, facts.st_gid);
    Check(::fchmod(copy.Descriptor(), facts.st_mode & 07777) == 0, path);
    CopyAttributes(file.Descriptor(), copy.Descriptor());
    KeepTimes(copy.Descriptor(), facts);
    copy.MoveTo(target.string());
    SyncFolder(target.parent_path());
}

} // namespace quavernet
