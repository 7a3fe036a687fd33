#include "inspect/OggInfoText.h"

#include <optional>

#include "app/TextHelpers.h"
#include "platform/Ascii.h"
#include "platform/OggInfoTool.h"
#include "platform/RegionalSettings.h"
#include "platform/RuntimeError.h"

namespace quavernet {

namespace {

constexpr std::size_t LongestText =
    32767;                              // Characters: a comment may hold megabytes, which no list can show.
constexpr std::size_t QuoteAndDots = 4; // After the path of a "Processing file" line.

/// One line and its capital form, in which the keys are searched.
class Line {
public:
    explicit Line(std::string_view text) : m_text(text), m_upper(UpperAscii(text)) {}

    /// The rest of the line after the key and `more` further characters; nothing if the key isn't there.
    std::optional<std::string_view> After(std::string_view upperKey, std::size_t more) const {
        return Rest(std::string_view(m_upper).find(upperKey), upperKey.size(), more);
    }
    std::optional<std::string_view> BehindExact(std::string_view key, std::size_t more) const {
        return Rest(m_text.find(key), key.size(), more);
    }
    std::optional<std::string_view> BehindStart(std::string_view upperKey, std::size_t more) const {
        return Rest(m_upper.starts_with(upperKey) ? 0 : std::string_view::npos, upperKey.size(), more);
    }

private:
    std::optional<std::string_view> Rest(std::size_t found, std::size_t keySize, std::size_t more) const {
        if (found == std::string_view::npos) {
            return std::nullopt;
        }
        const auto rest = m_text.substr(found + keySize);
        return rest.substr(LeftCharacters(rest, more).size());
    }

    std::string_view m_text;
    std::string m_upper;
};

/// A number in decimal, with a point or a comma before its fraction.
double DecimalNumber(std::string_view text) {
    std::string digits(Trim(text));
    const auto sign = digits.find_first_of(".,");
    if (sign != std::string::npos) {
        digits[sign] = '.';
    }
    const std::string_view unsignedPart = std::string_view(digits).substr(digits.starts_with('-') ? 1 : 0);
    if (unsignedPart.find_first_of("0123456789") == std::string_view::npos ||
        unsignedPart.find_first_not_of("0123456789.") != std::string_view::npos ||
        unsignedPart.find('.') != unsignedPart.rfind('.')) {
        throw RuntimeError(ErrorNumber::TypeMismatch, "Type mismatch");
    }
    return Val(digits);
}

/// The text before a mark, whatever the mark's case. Throws RuntimeError 5 if it isn't there.
std::string_view Before(std::string_view text, std::string_view upperMark) {
    const auto found = UpperAscii(text).find(upperMark);
    if (found == std::string_view::npos) {
        throw RuntimeError(ErrorNumber::InvalidProcedureCall, "Invalid procedure call or argument");
    }
    return text.substr(0, found);
}

/// Whole kilobits; a tool that speaks a language with a decimal comma prints one.
std::string WholeBitRate(std::string_view text) {
    std::string_view value;
    for (const char sign : {'.', ','}) {
        if (const auto found = text.find(sign); found != std::string_view::npos) {
            value = text.substr(0, found);
        }
    }
    return std::string(value);
}

/// From minutes, "m:", seconds and one character. Product and sum are 16-bit numbers: 546 minutes and seven
/// seconds is the longest.
std::string Seconds(std::string_view text) {
    const double minutes = Narrow16(DecimalNumber(Before(text, "M")));
    const auto colon = text.find(':');
    const auto afterColon = colon == std::string_view::npos ? text : text.substr(colon + 1);
    const double seconds = Narrow16(DecimalNumber(DropRightCharacters(afterColon, 1)));
    const double product = Narrow16(minutes * 60);
    return std::to_string(Narrow16(product + seconds));
}

class OutputReader {
public:
    /// With `clearing`, a new path completes the file before.
    explicit OutputReader(bool clearing) : m_clearing(clearing) {}

    void TakeLine(std::string_view text) {
        if (!m_clearing && IsPictureComment(text)) {
            return;
        }
        const Line line(text);
        Take(line.After("PROCESSING FILE", 2), [&](std::string_view value) { TakePath(value); });
        Take(line.BehindExact("Nominal bitrate:", 1),
             [&](std::string_view value) { m_file.bitRate = WholeBitRate(value); });
        Take(line.After("TITLE", 1), [&](std::string_view value) { m_file.title = Fitting(value); });
        Take(line.After("ARTIST", 1), [&](std::string_view value) { m_file.performer = Fitting(value); });
        Take(line.After("ALBUM", 1), [&](std::string_view value) { m_file.album = Fitting(value); });
        Take(line.After("GENRE", 1), [&](std::string_view value) { m_file.genre = Fitting(value); });
        Take(line.After("TOTAL DATA LENGTH:", 1),
             [&](std::string_view value) { m_file.size = DropRightCharacters(Before(value, "BYTES"), 1); });
        Take(line.After("PLAYBACK LENGTH:", 1),
             [&](std::string_view value) { m_file.length = Seconds(value); });
        Take(line.After("COMMENT=", 0), [&](std::string_view value) { m_file.comment = value; });
        Take(line.BehindStart("RATE:", 1), [&](std::string_view value) { m_file.frequency = value; });
        Take(line.After("DATE", 1), [&](std::string_view value) { m_file.year = value; });
        Take(line.After("CHANNELS:", 1), [&](std::string_view value) { m_file.channels = value; });
    }

    void TakeLines(std::string_view output) {
        while (!output.empty()) {
            const auto end = output.find('\n');
            std::string_view line = output.substr(0, end);
            output = end == std::string_view::npos ? std::string_view() : output.substr(end + 1);
            if (end != std::string_view::npos && line.ends_with('\r')) {
                line.remove_suffix(1);
            }
            // Any key may stand in a path, so a line end of a path may come into any value.
            if (line.find('\0') == std::string_view::npos) {
                TakeLine(line);
            } else {
                TakeLine(OggInfoTool::PathOfShown(std::string(line)));
            }
        }
    }

    OggFileInfo& File() { return m_file; }

    std::vector<OggFileInfo> TakeFiles() {
        if (!m_file.path.empty()) {
            m_files.push_back(std::move(m_file));
        }
        return std::move(m_files);
    }

private:
    template <typename Action> void Take(std::optional<std::string_view> value, Action action) {
        if (!value) {
            return;
        }
        try {
            action(*value);
        } catch (const RuntimeError& error) {
            m_file.failure = error.Description();
        }
    }

    // What goes into the library has a width. The details dialog writes its texts back: it gets them whole.
    std::string_view Fitting(std::string_view value) const {
        return m_clearing ? LeftCharacters(value, LongestText) : value;
    }

    void TakePath(std::string_view value) {
        if (m_clearing && !m_file.path.empty()) {
            m_files.push_back(std::move(m_file));
            m_file = {};
        } else if (m_clearing && !m_file.failure.empty()) {
            m_file = {}; // What could not be read must not spoil the next file.
        }
        m_file.path = DropRightCharacters(value, QuoteAndDots);
        m_file.name = FileNameFromPath(m_file.path);
    }

    bool m_clearing;
    OggFileInfo m_file;
    std::vector<OggFileInfo> m_files;
};

} // namespace

bool IsPictureComment(std::string_view comment) {
    std::string_view key = comment.substr(0, comment.find('='));
    key.remove_prefix(key.starts_with('\t') ? 1 : 0); // As the tool sets comments in.
    return EqualsIgnoringCase(key, "METADATA_BLOCK_PICTURE") || EqualsIgnoringCase(key, "COVERART");
}

std::vector<OggFileInfo> ReadOggInfo(std::string_view output) {
    OutputReader reader(true);
    reader.TakeLines(output);
    return reader.TakeFiles();
}

OggFileInfo ReadOggDetails(std::string_view output) {
    OutputReader reader(false);
    reader.TakeLines(output);
    return std::move(reader.File());
}

} // namespace quavernet
