#include "inspect/modMp3Info.h"

#include "inspect/FileBytes.h"
#include "inspect/ReadFile.h"

#include "app/LoadResString.h"
#include "app/TextHelpers.h"
#include "app/TextNumbers.h"

namespace quavernet {

namespace {

void CutTrailingBlanks(std::string& text) {
    text.resize(TrimRight(text).size());
}

// Names what is still empty. A file that says neither title nor performer is asked by its name.
void FillUnknownNames(CurrentFile& file) {
    if (!file.FileArtist.empty() && !file.FileTitle.empty() && file.FileArtist != file.FileTitle) {
        return; // They can't both be unknown, and most files end here without a look at the texts.
    }
    const std::string unknown = LoadResString(Texts::Unknown);
    for (std::string* name : {&file.FileArtist, &file.FileTitle}) {
        if (name->empty()) {
            *name = unknown;
        }
    }
    if (file.FileArtist == unknown && file.FileTitle == unknown) {
        // FileGenre stays the tag's.
        TagsFromFileName(file);
        file.FileArtist = TrimRight(file.Id3v1Tag.TagArtist);
        file.FileTitle = TrimRight(file.Id3v1Tag.TagTitle);
    }
}

} // namespace

void InspectFile(const std::string& path, CurrentFile& file) {
    file.Id3v1Tag = Id3v1Tag();
    file.FileArtist.clear();
    file.FileTitle.clear();
    file.FileAlbum.clear();
    file.FileGenre.clear();
    file.FileQuality.clear();

    const FileBytes bytes(path);
    ReadTags(path, bytes, file);
    ReadAudioInfo(path, bytes, file);

    // Blanks go before the NULs: blanks in front of a NUL stay, and an album of them is an album of its own.
    CutTrailingBlanks(file.Id3v1Tag.TagArtist);
    CutTrailingBlanks(file.Id3v1Tag.TagTitle);
    file.FileArtist = RemoveNulls(file.Id3v1Tag.TagArtist);
    file.FileTitle = RemoveNulls(file.Id3v1Tag.TagTitle);
    file.FileQuality = std::to_string(file.AudioInfo.BitRate);
    file.FileGenre = std::to_string(file.Id3v1Tag.TagGenre);
    file.FileAlbum = RemoveNulls(TrimRight(file.Id3v1Tag.TagAlbum));

    file.FileArtist = StripNulls(file.FileArtist);
    file.FileTitle = StripNulls(file.FileTitle);
    FillUnknownNames(file);
}

} // namespace quavernet
