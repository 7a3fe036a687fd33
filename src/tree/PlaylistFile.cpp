#include "tree/PlaylistFile.h"

#include "app/AudioKind.h"
#include "app/MainModule.h"
#include "platform/TextLines.h"

namespace quavernet {

namespace {

// A path as the library keeps it. The system would cut one at its first NUL, and find a file that the line
// does not name.
bool IsFullPath(std::string_view line) {
    return line.starts_with('/') && line.find('\0') == std::string_view::npos &&
           line.find("//") == std::string_view::npos && line.find("/./") == std::string_view::npos;
}

constexpr std::string_view Scheme = "file://";
constexpr std::string_view Digits = "0123456789ABCDEF";
constexpr std::string_view Plain = // In an address, these are themselves.
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789/-._~";

std::string Address(std::string_view path) {
    std::string address(Scheme);
    for (const char c : path) {
        if (Plain.find(c) != std::string_view::npos) {
            address += c;
        } else {
            const auto byte = static_cast<unsigned char>(c);
            address.append({'%', Digits[byte / 16], Digits[byte % 16]});
        }
    }
    return address;
}

// "%" and two hexadecimal digits become a byte. A wrong pair is left out: the path then makes another
// address, which shows that the line was none of ours.
std::string PathOfAddress(std::string_view address) {
    std::string path;
    for (std::size_t i = Scheme.size(); i < address.size(); ++i) {
        if (address[i] != '%' || i + 2 >= address.size()) {
            path += address[i];
            continue;
        }
        const std::size_t high = Digits.find(address[i + 1]);
        const std::size_t low = Digits.find(address[i + 2]);
        if (high < Digits.size() && low < Digits.size()) {
            path += static_cast<char>(high * 16 + low);
        }
        i += 2;
    }
    return path;
}

// No other address is looked at: whatever it leads to, the program has not written it.
std::string FileOfAddress(std::string_view line, const FileQuestion& exists) {
    const std::string path = PathOfAddress(line);
    return IsFullPath(path) && LineOfFile(path) == line && exists(path) ? path : std::string();
}

} // namespace

std::string LineOfFile(const std::string& path) {
    return path.find_first_of("\r\n") == std::string::npos ? path : Address(path);
}

bool FileExists(const std::string& path) {
    return services.fileSystem->FileExists(path);
}

std::string FileOfLine(std::string_view line, const FileQuestion& exists) {
    if (line.starts_with(Scheme)) {
        return FileOfAddress(line, exists);
    }
    if (!IsFullPath(line)) {
        return {};
    }
    std::string path(line);
    if (exists(path)) {
        return path;
    }
    std::string decoded = DecodeText(line);
    return decoded != path && exists(decoded) ? decoded : std::string();
}

std::string PlaylistFile(std::string_view line, const FileQuestion& exists) {
    return IsAudio(line) ? FileOfLine(line, exists) : std::string();
}

} // namespace quavernet
