#include "editing/SaveDetails.h"

#include "app/LibraryViews.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/ShowBox.h"
#include "app/TextHelpers.h"
#include "app/TextNumbers.h"
#include "browser/GridSelection.h"
#include "editing/OggComments.h"
#include "inspect/modMp3Info.h"
#include "library/SqlQuote.h"
#include "platform/VorbisCommentTool.h"

namespace quavernet {

namespace {

void SaveId3v1(DetailsFile& file, const EditedDetails& edited) {
    Id3v1Tag& tag = file.Id3v1();
    tag.TagArtist = edited.Texts.Performer;
    tag.TagTitle = edited.Texts.Title;
    tag.TagAlbum = edited.Texts.Album;
    tag.TagYear = edited.Texts.Year;
    tag.TagComment = edited.Texts.Comment;
    tag.TagGenre = edited.Genre < NoGenre ? static_cast<std::uint8_t>(edited.Genre) : NoGenre;
    WriteId3v1(file.Path(), tag);
}

void SaveId3v2(DetailsFile& file, const DetailsTexts& texts) {
    TagComponent& tag = file.Tag();
    tag.SetTagField(TagComponent::Title, texts.Title);
    tag.SetTagField(TagComponent::Performer, texts.Performer);
    tag.SetTagField(TagComponent::Album, texts.Album);
    tag.SetTagField(TagComponent::Year, texts.Year);
    tag.SetTagField(TagComponent::Genre, texts.Genre);
    tag.SetTagField(TagComponent::Comment, texts.Comment);
    tag.SetTagField(TagComponent::Publisher, texts.Publisher);
    tag.SaveFile(file.Path());
}

void SaveOgg(const std::string& path, const DetailsTexts& texts) {
    services.oggComments->Write(path, EditedComments(texts, services.oggComments->List(path)));
}

void SaveTag(DetailsFile& file, const EditedDetails& edited) {
    if (file.IsOgg()) {
        SaveOgg(file.Path(), edited.Texts);
    } else if (edited.ToId3v1) {
        SaveId3v1(file, edited);
    } else {
        SaveId3v2(file, edited.Texts);
    }
}

std::optional<std::string> FirstKey(const std::string& select) {
    ADODB::Recordset rows;
    rows.Open(select, *mainModule.Connection);
    auto key = rows.RecordCount() > 0 ? std::optional(rows.Fields(0).Text()) : std::nullopt;
    rows.Close();
    return key;
}

// The key of a row that was just added: the table's last one.
std::string LastKey(const std::string& select) {
    ADODB::Recordset rows;
    rows.Open(select, *mainModule.Connection);
    rows.MoveLast();
    std::string key = rows.Fields(0).Text();
    rows.Close();
    return key;
}

std::string Quoted(const std::string& text) {
    return SqlQuote(Trim(text));
}

std::string PerformerKey(const std::string& performer) {
    const std::string name = Quoted(performer);
    if (const auto key = FirstKey("Select Inter_id from Interpret where Interpret = '" + name + "'")) {
        return *key;
    }
    mainModule.Connection->Execute("Insert into Interpret (Interpret) values ('" + name + "')");
    return LastKey("Select Inter_id from Interpret");
}

std::string AlbumKey(const std::string& album) {
    const std::string name = Quoted(album);
    if (const auto key = FirstKey("Select Album_id from Albums where Name = '" + name + "'")) {
        return *key;
    }
    mainModule.Connection->Execute("Insert into Albums (Name) values ('" + name + "')");
    return LastKey("Select Album_id from Albums");
}

// A title that is new gets its key after performer and album have theirs.
void SaveInLibrary(const std::string& path, const EditedDetails& edited) {
    const std::string title = Quoted(edited.Texts.Title);
    auto titleKey = FirstKey("Select Title_id from Titel where Name = '" + title + "'");
    if (!titleKey) {
        mainModule.Connection->Execute("Insert into Titel (Name) values ('" + title + "')");
    }
    const std::string performerKey = PerformerKey(edited.Texts.Performer);
    const std::string albumKey = AlbumKey(edited.Texts.Album);
    if (!titleKey) {
        titleKey = LastKey("Select Title_id from Titel");
    }
    mainModule.Connection->Execute("Update Files set Inter_id = " + performerKey + ", Title_id = " +
                                   *titleKey + ", Genre_id = " + std::to_string(edited.Genre) +
                                   ", Album_id = " + albumKey + " where Path = '" + SqlQuote(path) + "'");
}

// Failures of the tag component say the same of every reason: whether the file may be written shows when it
// is opened.
bool IsWriteProtected(const std::string& path) {
    try {
        services.files->Open(path, BinaryFile::Access::ReadWrite);
    } catch (const OpenError& error) {
        return error.Number() == ErrorNumber::PathFileAccess && error.IsPlainFile();
    } catch (const RuntimeError&) {
        return false;
    }
    return false;
}

void RestoreGrid(GridSelection& grid, std::int32_t topRow) {
    grid.SetRow(mainModule.DetailsRow);
    if (grid.Rows() < 2) {
        return;
    }
    if (grid.Rows() - 1 < mainModule.GridCurrentRow) {
        --mainModule.GridCurrentRow;
    }
    grid.SetRow(mainModule.GridCurrentRow);
    IgnoreFailure([&] { grid.SelChange(); }); // Takes the top row of the moment for the remembered one.
    mainModule.GridTopRow = topRow;
    grid.SetTopRow(topRow);
}

} // namespace

std::optional<RuntimeError> SaveDetails(DetailsFile& file, const EditedDetails& edited) {
    std::optional<ADODB::WriteLock> writeLock;
    try {
        if (!file.IsOgg()) {
            writeLock.emplace(*mainModule.Connection);
        }
        SaveTag(file, edited);
    } catch (const RuntimeError& failure) {
        return failure;
    }
    if (!file.IsOgg()) {
        SaveInLibrary(file.Path(), edited);
    }
    return std::nullopt;
}

void ShowSaveFailure(const std::string& path, const RuntimeError& failure) {
    if (IsWriteProtected(path)) {
        ShowBox(Texts::WriteProtected, Texts::SavingCancelled, MsgBox::Icon::Exclamation);
    } else {
        ShowBox(FailureText(failure), Texts::SavingCancelled, MsgBox::Icon::Critical);
    }
}

void ReloadAfterSave(GridSelection& grid, LibraryViews& views) {
    mainModule.GridCurrentRow = grid.Row();
    const std::int32_t topRow = mainModule.GridTopRow = grid.TopRow();
    if (!mainModule.LoadOverSearch) {
        views.LoadDatabase("");
    }
    RestoreGrid(grid, topRow);
}

std::optional<std::string> CoverKey(const std::string& performer, const std::string& album) {
    const auto interId =
        FirstKey("Select Inter_id from Interpret where Interpret = '" + Quoted(performer) + "'");
    if (!interId) {
        return std::nullopt;
    }
    const auto albumId = FirstKey("Select Album_id from Albums where Name = '" + Quoted(album) + "'");
    if (!albumId) {
        return std::nullopt;
    }
    return "AlbumID:" + *albumId + "InterID:" + *interId;
}

} // namespace quavernet
