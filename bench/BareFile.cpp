#include "BareFile.h"

#include <cstddef>
#include <stdexcept>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace quavernet::bench {

namespace {

constexpr std::size_t BlockSize = std::size_t{1} << 20;

void Require(bool condition) {
    if (!condition) {
        throw std::runtime_error("can't write the song");
    }
}

class OpenNumber {
public:
    OpenNumber(const std::string& path, int flags) : m_number(::open(path.c_str(), flags | O_CLOEXEC, 0644)) {
        Require(m_number >= 0);
    }
    ~OpenNumber() { ::close(m_number); }
    OpenNumber(const OpenNumber&) = delete;
    OpenNumber& operator=(const OpenNumber&) = delete;

    int Get() const { return m_number; }

private:
    int m_number;
};

} // namespace

void CopyAndSync(const std::string& from, const std::string& to) {
    const OpenNumber source(from, O_RDONLY);
    const OpenNumber target(to, O_WRONLY | O_CREAT | O_TRUNC);
    std::vector<char> block(BlockSize);
    while (const ssize_t count = ::read(source.Get(), block.data(), block.size())) {
        Require(count > 0 && ::write(target.Get(), block.data(), static_cast<std::size_t>(count)) == count);
    }
    Require(::fsync(target.Get()) == 0);
}

void WriteAndSync(const std::string& path, const std::string& bytes) {
    const OpenNumber file(path, O_WRONLY);
    Require(::write(file.Get(), bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
    Require(::fsync(file.Get()) == 0);
}

} // namespace quavernet::bench
