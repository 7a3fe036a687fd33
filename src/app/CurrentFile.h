// The record of one file under inspection: filled by inspect/ and its callers, read by the store, the details
// dialog and the player. Whoever inspects files owns the record that it works on.
#pragma once

#include <cstdint>
#include <string>

namespace quavernet {

/// Facts of the audio stream that was inspected last.
struct AudioInfo {
    std::int16_t BitRate = 0;   ///< Kilobits per second; bits per sample for a wave file.
    std::int32_t Frequency = 0; ///< Hz; a multiple of 10 for a wave file.
    std::string Mode;           ///< Texts 447 to 450; "mono" or "stereo" for a wave file.
    std::string Emphasis;       ///< "no", "50/15", text 451 or "CCITT J 17".
    std::int16_t Version = 0;   ///< 1, 2, 25 for MPEG 2.5, 0 if reserved.
    std::int16_t Layer = 0;     ///< 1 to 3, 0 if reserved.
    std::string PaddingFlag;    ///< The flags are text 453 "Ja" or 452 "Nein".
    std::string ProtectedFlag;  ///< Yes when the CRC bit is 0.
    std::int32_t Length = 0;    ///< Play time in whole seconds.
    std::string CopyFlag;
    std::string OriginalFlag;
    std::string PrivateFlag;
};

/// The genre number of a file without a genre.
inline constexpr std::uint8_t NoGenre = 255;

/// The 125 bytes after the mark "TAG", as UTF-8. Widths are in characters; a field that was read keeps its
/// trailing blanks and NULs.
struct Id3v1Tag {
    static constexpr int TextWidth = 30;
    static constexpr int YearWidth = 4;

    std::string TagTitle;
    std::string TagArtist;
    std::string TagAlbum;
    std::string TagYear;
    std::string TagComment;
    std::uint8_t TagGenre = NoGenre;
};

/// The interface between inspection, scan driver and store. Each inspection overwrites it, but for what stays
/// from file to file: the kind flags, IsVbr, VbrFrames, and all that the inspection's caller fills.
///
/// A scan and a drop go on where the one before them left off: they share mainModule.CurrentFile. Each takes
/// a copy of it at its start, works on that alone, and puts it back when it is done with a file (a drop) or
/// with all of them (a scan). So one that runs inside another, while events run, changes nothing of the
/// other's file.
struct CurrentFile {
    std::string CurrentPath;
    std::string CurrentFileName;
    std::string DetailsPath;

    std::string FileTitle;
    std::string FileArtist;
    std::string FileAlbum;
    std::string FileQuality; ///< Bit rate in decimal.
    std::string FileGenre;   ///< Genre number in decimal; that of NoGenre means none.
    std::string FileSize;    ///< Bytes in decimal; megabytes as formatted text once the file is stored.
    std::string FileName;
    std::string FilePath;
    std::string FileDate;
    std::string FileDrive;

    quavernet::AudioInfo AudioInfo;
    quavernet::Id3v1Tag Id3v1Tag;

    /// The kind flags keep their value from file to file until a tag is found; HasNoTag stays false for ever.
    bool HasTagV1 = false;
    bool HasTagV2 = false;
    bool HasNoTag = false;

    bool IsVbr = false;   ///< The header last read carries a Xing mark.
    double VbrFrames = 0; ///< The number after the Xing mark; kept over files without one.
};

} // namespace quavernet
