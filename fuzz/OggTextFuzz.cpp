// Feeds any text to the reader of the Ogg tool's lines, as if a tool had printed it, and compares what comes
// out with a second reading of each line.
#include "inspect/OggInfoText.h"

#include "FuzzInput.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace quavernet;
using fuzz::Require;

std::string Upper(std::string_view text) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    return upper;
}

std::vector<std::string> LinesOf(std::string_view output) {
    std::vector<std::string> lines;
    while (!output.empty()) {
        const bool ended = output.find('\n') != std::string_view::npos;
        lines.emplace_back(fuzz::TakeLine(output));
        if (ended && lines.back().ends_with('\r')) {
            lines.back().pop_back();
        }
        std::replace(lines.back().begin(), lines.back().end(), '\0', '\n'); // Of a path, see OggInfoTool.
    }
    return lines;
}

bool Holds(const std::string& line, const char* upperKey) {
    return Upper(line).find(upperKey) != std::string::npos;
}

// Whether the value ends the last of the lines that hold the key, one character after it at most.
void RequireLast(const std::vector<std::string>& lines, const char* upperKey, const std::string& value) {
    // NOLINTNEXTLINE(modernize-loop-convert): clang 14 does not know the library's way to turn a range.
    for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
        if (Holds(*line, upperKey)) {
            Require(line->ends_with(value));
            const std::size_t end = Upper(*line).find(upperKey) + std::char_traits<char>::length(upperKey);
            const std::size_t rest = line->size() - end;
            Require(value.size() <= rest && rest - value.size() <= 4); // A character has four bytes at most.
            return;
        }
    }
    Require(value.empty());
}

void RequireTexts(const std::vector<std::string>& lines, const OggFileInfo& file) {
    RequireLast(lines, "TITLE", file.title);
    RequireLast(lines, "ARTIST", file.performer);
    RequireLast(lines, "ALBUM", file.album);
    RequireLast(lines, "GENRE", file.genre);
    RequireLast(lines, "DATE", file.year);
    RequireLast(lines, "CHANNELS:", file.channels);
    Require(file.path.ends_with(file.name) && file.name.find('/') == std::string::npos);
    Require(file.bitRate.find(',') == std::string::npos); // The comma cuts last.
    if (!file.length.empty()) {
        int seconds = 0;
        const char* const end = file.length.data() + file.length.size();
        const auto result = std::from_chars(file.length.data(), end, seconds);
        Require(result.ec == std::errc() && result.ptr == end && seconds >= -32768 && seconds <= 32767);
    }
}

// The lines of each file, from its "Processing file" on; those before the first belong to it too.
void RequireFiles(std::string_view output) {
    const std::vector<OggFileInfo> files = ReadOggInfo(output);
    const std::vector<std::string> lines = LinesOf(output);
    const auto begins = static_cast<std::size_t>(std::count_if(
        lines.begin(), lines.end(), [](const std::string& line) { return Holds(line, "PROCESSING FILE"); }));
    Require(files.size() <= begins);
    for (const OggFileInfo& file : files) {
        Require(!file.path.empty());
        Require(file.name.find('/') == std::string::npos && file.path.ends_with(file.name));
    }
    if (begins == 1 && files.size() == 1 && Holds(lines.front(), "PROCESSING FILE")) {
        RequireTexts(lines, files.front());
        if (files.front().failure.empty()) {
            Require(ReadOggDetails(output) == files.front());
        }
    }
}

// Each file's record is its own: read after another one's output it is the same.
void RequireIndependent(std::string_view output) {
    const std::string before = "Processing file \"/music/x.ogg\"...\n\tTITLE=before\nRate: 1\n";
    const auto first = ReadOggInfo(before);
    const auto alone = ReadOggInfo(output);
    if (alone.empty() || !Holds(LinesOf(output).front(), "PROCESSING FILE")) {
        return;
    }
    const auto both = ReadOggInfo(before + std::string(output));
    Require(both.size() >= alone.size() && both.size() <= alone.size() + 1 && both.front().title == "before");
    if (both.size() == alone.size() + 1) {
        Require(both.front() == first.front() && std::equal(alone.begin(), alone.end(), both.begin() + 1));
    }
}

void RequireLineEndsAlike(const std::string& output) {
    if (output.find('\r') != std::string::npos) {
        return;
    }
    std::string other;
    for (const char c : output) {
        other += c == '\n' ? "\r\n" : std::string(1, c);
    }
    Require(ReadOggInfo(other) == ReadOggInfo(output));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string output(fuzz::TextOf(data, size));
    RequireFiles(output);
    RequireIndependent(output);
    RequireLineEndsAlike(output);
    ReadOggDetails(output); // Never fails.
    return 0;
}
