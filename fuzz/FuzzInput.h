// What the fuzz targets share: the end of a run whose result breaks a rule, and the pieces of an input that
// holds more than one file. Included by every target.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quavernet::fuzz {

/// Ends the run with the input at hand if a result breaks a rule.
inline void Require(bool condition, int line = __builtin_LINE()) {
    if (!condition) {
        std::fprintf(stderr, "The rule in line %d is broken.\n", line);
        std::abort();
    }
}

inline std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
    return {reinterpret_cast<const char*>(data), size};
}

inline std::span<const std::byte> BytesOf(std::string_view text) {
    return std::as_bytes(std::span(text.data(), text.size()));
}

/// Takes the next line, without its end, off the input's front; the rest of it where no line ends.
inline std::string_view TakeLine(std::string_view& input) {
    const std::string_view line = input.substr(0, input.find('\n'));
    input.remove_prefix(line.size() < input.size() ? line.size() + 1 : line.size());
    return line;
}

/// Takes the next byte off the input's front; 0 at its end.
inline unsigned TakeByte(std::string_view& input) {
    if (input.empty()) {
        return 0;
    }
    const auto byte = static_cast<unsigned char>(input.front());
    input.remove_prefix(1);
    return byte;
}

/// Takes a text off the input's front: its length in one byte, then so much of it as there is.
inline std::string TakeText(std::string_view& input) {
    const std::size_t length = TakeByte(input);
    std::string text(input.substr(0, length));
    input.remove_prefix(text.size());
    return text;
}

/// Written in place, so that a file of ten thousand runs is made once.
inline void WriteWhole(const std::string& path, std::string_view contents) {
    const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    Require(file >= 0 &&
            ::write(file, contents.data(), contents.size()) == static_cast<ssize_t>(contents.size()));
    ::close(file);
}

inline std::string ReadWhole(const std::string& path) {
    const int file = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat facts {};
    Require(file >= 0 && ::fstat(file, &facts) == 0);
    std::string contents(static_cast<std::size_t>(facts.st_size), '\0');
    Require(::read(file, contents.data(), contents.size()) == facts.st_size);
    ::close(file);
    return contents;
}

} // namespace quavernet::fuzz
