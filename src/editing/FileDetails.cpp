#include "editing/FileDetails.h"

#include "app/AudioKind.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextHelpers.h"
#include "app/TextNumbers.h"
#include "inspect/OggInfoText.h"
#include "inspect/modMp3Info.h"
#include "library/SqlQuote.h"

#include <utility>

namespace quavernet {

namespace {

constexpr const char* PlainCaption = "Details"; // In both languages.

std::string ExtensionByName(const std::string& path) {
    switch (AudioKindOf(path)) {
    case AudioKind::Mp3:
        return "mp3";
    case AudioKind::Wav:
        return "wav";
    case AudioKind::Ogg:
        return "ogg";
    case AudioKind::None:
        break;
    }
    return {};
}

// A file that another running program took out of the library is told by its name: as an MPEG file an Ogg
// file would lose its end to a tag.
std::string ReadDetailsExtension(const std::string& path) {
    ADODB::Recordset rows;
    rows.Open("Select Extension from Extensions where Extension_id = (Select Extension_id from Files where "
              "Path = '" +
                  SqlQuote(path) + "')",
              *mainModule.Connection);
    std::string extension = rows.RecordCount() > 0 ? rows.Fields(0).Text() : ExtensionByName(path);
    rows.Close();
    return extension;
}

// The minutes are a quotient that is rounded to two decimals first and cut then.
std::string PlayLength(std::int32_t seconds) {
    constexpr std::int32_t SecondsPerMinute = 60;
    const float quotient = static_cast<float>(seconds) / static_cast<float>(SecondsPerMinute);
    const std::string minutes = FormatFixedSingle(quotient, 1, 2, services.regional);
    return std::string(DropRightCharacters(minutes, 3)) + ":" +
           FormatFixed(seconds % SecondsPerMinute, 2, 0, services.regional) + " min";
}

std::string Megabytes(std::uint64_t bytes) {
    return FormatNumber(static_cast<double>(bytes) / 1024 / 1024, 2, services.regional) + " MB";
}

DetailsTexts TextsOfId3v1(Id3v1Tag& tag) {
    for (std::string* field : {&tag.TagArtist, &tag.TagTitle, &tag.TagAlbum, &tag.TagComment, &tag.TagYear}) {
        *field = StripNulls(*field);
    }
    DetailsTexts texts;
    texts.Title = tag.TagTitle;
    texts.Performer = tag.TagArtist;
    texts.Album = tag.TagAlbum;
    texts.Year = tag.TagYear;
    texts.Comment = tag.TagComment;
    return texts;
}

DetailsTexts TextsOfId3v2(const TagComponent& tag) {
    return {tag.TagField(TagComponent::Title),    tag.TagField(TagComponent::Performer),
            tag.TagField(TagComponent::Album),    tag.TagField(TagComponent::Year),
            tag.TagField(TagComponent::Genre),    tag.TagField(TagComponent::Comment),
            tag.TagField(TagComponent::Publisher)};
}

void ShowAudioInfo(const AudioInfo& info, FileDetails& shown) {
    shown.Length = PlayLength(info.Length);
    shown.Quality = info.BitRate == -1 ? "--" : std::to_string(info.BitRate);
    shown.Frequency = std::to_string(info.Frequency);
    shown.Layer = std::to_string(info.Layer);
    shown.Version = std::to_string(info.Version);
    shown.Mode = info.Mode;
}

void ReadOggFile(const std::string& path, FileDetails& shown) {
    const OggFileInfo info = ReadOggDetails(services.oggInfo->Run({path}));
    shown.Kind = DetailsKind::Ogg;
    if (!info.path.empty()) {
        shown.Path = info.path;
    }
    shown.Texts = {info.title, info.performer, info.album, info.year, info.genre, info.comment, {}};
    shown.Quality = info.bitRate;
    shown.Frequency = info.frequency;
    if (!info.length.empty()) {
        shown.Length = PlayLength(Narrow32(Val(info.length)));
    }
    if (info.channels == "1") {
        shown.Mode = "mono";
    } else if (info.channels == "2") {
        shown.Mode = "stereo";
    }
}

} // namespace

DetailsFile::DetailsFile() : m_tag(services.createTagComponent()) {}

FileDetails DetailsFile::LoadDetails(const std::string& path, const ListedNames& names) {
    const std::string extension = ReadDetailsExtension(path);
    const FileFacts facts = services.fileSystem->GetFile(path);
    FileDetails shown;
    shown.Caption = PlainCaption;
    shown.Path = path;
    m_extension = extension;
    m_file = CurrentFile();
    m_file.DetailsPath = path;
    if (IsOgg()) {
        ReadOggFile(path, shown);
    } else {
        ReadMpegOrWave(path, names, shown);
    }
    m_file.FileSize = std::to_string(facts.size);
    shown.Size = Megabytes(facts.size);
    if (m_extension == "wav") {
        shown.Caption = LoadResString(Texts::WaveNotEdited);
        shown.CanEdit = false;
    }
    return shown;
}

// The inspection lets events run, so that its record is not yet the dialog's, and the component that it
// shares with the scanner may hold another file afterwards: the tag is read once more by the dialog's own.
void DetailsFile::ReadMpegOrWave(const std::string& path, const ListedNames& names, FileDetails& shown) {
    CurrentFile file = m_file;
    InspectFile(path, file);
    if (!file.HasTagV1 && !file.HasTagV2) {
        SetTagKind(3, file);
    }
    m_file = std::move(file);
    m_tag->LoadFile(path);
    if (m_file.HasTagV1) {
        shown.Kind = DetailsKind::Id3v1;
        shown.Texts = TextsOfId3v1(m_file.Id3v1Tag);
        m_genre = m_file.Id3v1Tag.TagGenre;
    } else if (m_file.HasTagV2) {
        shown.Kind = DetailsKind::Id3v2;
        shown.Texts = TextsOfId3v2(*m_tag);
    } else {
        shown.Texts.Performer = names.Performer;
        shown.Texts.Title = names.Title;
        shown.CanEdit = !path.ends_with("wav");
        shown.Caption = LoadResString(shown.CanEdit ? Texts::OnlyId3v1Saved : Texts::WaveNotSaved);
    }
    ShowAudioInfo(m_file.AudioInfo, shown);
}

DetailsGenres DetailsFile::FillDetailsGenres() const {
    DetailsGenres genres;
    ADODB::Recordset rows;
    rows.Open("Select Genre, Genre_id from Genres Order By Genre", *mainModule.Connection);
    for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
        genres.Entries.push_back({rows.Fields(0).Text(), rows.Fields(1).Integer()});
        if (m_genre != NoGenre && !m_file.HasNoTag && genres.Entries.back().ItemData == m_genre) {
            genres.ListIndex = static_cast<int>(genres.Entries.size()) - 1;
        }
    }
    rows.Close();
    return genres;
}

} // namespace quavernet
