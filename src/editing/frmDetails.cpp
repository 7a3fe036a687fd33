#include "editing/frmDetails.h"

#include "adapters/qt/FileUris.h"
#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/ScopedValue.h"
#include "app/ShowBox.h"
#include "app/TextNumbers.h"
#include "browser/GridOpen.h"
#include "browser/GridView.h"
#include "editing/SaveDetails.h"
#include "help/HelpKey.h"
#include "ui_frmDetails.h"
#include "widgets/BusyMark.h"
#include "widgets/DragFiles.h"
#include "widgets/EnterKey.h"
#include "widgets/HourglassPointer.h"
#include "widgets/Mnemonics.h"
#include "widgets/NeverMinimized.h"
#include "widgets/TitleRoom.h"

#include <QKeyEvent>
#include <QMouseEvent>

#include <array>
#include <utility>

namespace quavernet {

namespace {

// A list that has become empty has no row: the dialog then stays with its file.
std::string PathOfRow(std::int32_t row, const std::string& otherwise) {
    return row >= 1 && static_cast<std::size_t>(row) <= mainModule.FilePaths.Count()
               ? mainModule.FilePaths.Item(row)
               : otherwise;
}

ListedNames NamesOfRow(GridView& grid) {
    const std::int32_t row = grid.Selection().Row();
    if (row < 1) {
        return {};
    }
    const ListRows& rows = grid.Model().Rows();
    const auto number = static_cast<std::size_t>(row);
    return {rows.Text(number, ListColumn::Interpret), rows.Text(number, ListColumn::Title)};
}

} // namespace

frmDetails::frmDetails(EditingParts parts, QWidget* owner)
    : QDialog(owner), m_parts(std::move(parts)), m_ui(std::make_unique<Ui::frmDetails>()) {
    m_ui->setupUi(this);
    new TitleRoom(this);
    new NeverMinimized(this);
    setWindowModality(Qt::WindowModal); // What cmdPlay starts can be stopped in the player.
    LoadStrings();
    m_ui->lblCover->setVisible(static_cast<bool>(m_parts.ShowCovers));
    SetEditMode(EditMode::View);
    LoadDetails();
    ConnectControls();
    (m_shown.CanEdit ? m_ui->cmdEdit : m_ui->cmdOK)->setFocus();
    new HelpKey(this);
}

frmDetails::~frmDetails() = default;

void frmDetails::LoadStrings() {
    const std::array labels{m_ui->Label1,  m_ui->Label2,  m_ui->Label3,  m_ui->Label4,
                            m_ui->Label5,  m_ui->Label6,  m_ui->Label7,  m_ui->Label8,
                            m_ui->Label9,  m_ui->Label10, m_ui->Label11, m_ui->Label12,
                            m_ui->Label13, m_ui->Label14, m_ui->Label15, m_ui->Label16};
    constexpr std::int32_t FirstLabel = 511; // They follow each other from here.
    for (std::size_t i = 0; i < labels.size(); ++i) {
        labels[i]->setText(ToQString(LoadResString(FirstLabel + static_cast<std::int32_t>(i))));
    }
    m_ui->lblCover->setText(ToQString(LoadResString(527)));
    m_ui->cmdOK->setText(ToQString(LoadResString(101)));
    m_ui->cmdCancel->setText(ToQString(LoadResString(102)));
    m_ui->cmdEdit->setText(ToQString(LoadResString(109)));
    m_ui->cmdSave->setText(ToQString(LoadResString(110)));
    m_ui->optID3V1->setText(QStringLiteral("ID3v1"));
    m_ui->optID3V2->setText(QStringLiteral("ID3v2"));
    m_ui->cmdPlay->SetLooks({"Play", "PlayGreen", "PlayGreenDown"}, 18);
    const QString play = ToQString(LoadResString(595));
    m_ui->cmdPlay->setToolTip(play);
    m_ui->cmdPlay->setAccessibleName(play);
    m_ui->cboGenre->setAccessibleName(m_ui->Label5->text());
    MarkMnemonics(*this);
}

void frmDetails::ConnectControls() {
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->cmdEdit, &QPushButton::clicked, this, &frmDetails::cmdEdit_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &frmDetails::cmdCancel_Click);
    connect(m_ui->cmdSave, &QPushButton::clicked, this, &frmDetails::cmdSave_Click);
    connect(m_ui->cmdPlay, &PictureButton::clicked, this, &frmDetails::cmdPlay_Click);
    connect(m_ui->optID3V1, &QRadioButton::toggled, this, &frmDetails::OptionChosen);
    for (TagField* field : findChildren<TagField*>()) {
        new EnterKey(field, [this] { m_ui->cmdSave->click(); });
    }
    new EnterKey(m_ui->cboGenre, [this] { m_ui->cmdSave->click(); });
    m_ui->txtPath->installEventFilter(this);
    m_ui->Label3->installEventFilter(this);
    m_ui->lblCover->installEventFilter(this);
}

bool frmDetails::IsEditing() const {
    return m_ui->cmdSave->isEnabled();
}

// While one of them lets events run, no other one begins: it would save or show what the first is changing.
void frmDetails::OneAtATime(const std::function<void()>& handler) {
    if (!m_acting) {
        const ScopedValue acting(m_acting, true);
        const BusyMark busy(*this);
        handler();
    }
}

void frmDetails::LoadDetails() {
    const std::string path = PathOfRow(m_parts.Grid.Selection().Row(), m_file.Path());
    m_shown = m_file.LoadDetails(path, NamesOfRow(m_parts.Grid));
    ShowDetails();
}

void frmDetails::ShowDetails() {
    setWindowTitle(ToQString(m_shown.Caption));
    m_ui->cmdEdit->setEnabled(m_ui->cmdEdit->isEnabled() && m_shown.CanEdit);
    m_ui->txtPath->ShowText(m_shown.Path);
    m_ui->txtInterpret->ShowText(m_shown.Texts.Performer);
    m_ui->txtTitle->ShowText(m_shown.Texts.Title);
    m_ui->txtAlbum->ShowText(m_shown.Texts.Album);
    m_ui->txtYear->ShowText(m_shown.Texts.Year);
    m_ui->txtGenre->ShowText(m_shown.Texts.Genre);
    m_ui->txtComment->ShowText(m_shown.Texts.Comment);
    m_ui->txtPublisher->ShowText(m_shown.Texts.Publisher);
    m_ui->txtQuality->ShowText(m_shown.Quality);
    m_ui->txtSize->ShowText(m_shown.Size);
    m_ui->txtLength->ShowText(m_shown.Length);
    m_ui->txtFrequency->ShowText(m_shown.Frequency);
    m_ui->txtMode->ShowText(m_shown.Mode);
    m_ui->txtLayer->ShowText(m_shown.Layer);
    m_ui->txtVersion->ShowText(m_shown.Version);
    const ScopedValue showing(m_showing, true);
    if (m_shown.Kind == DetailsKind::Id3v2) {
        m_ui->optID3V2->setChecked(true);
    } else if (m_shown.Kind != DetailsKind::Ogg) {
        m_ui->optID3V1->setChecked(true);
        FillDetailsGenres();
    }
}

void frmDetails::FillDetailsGenres() {
    const DetailsGenres genres = m_file.FillDetailsGenres();
    m_ui->cboGenre->clear();
    for (const DetailsGenres::Entry& entry : genres.Entries) {
        m_ui->cboGenre->addItem(ToLine(entry.Genre), QVariant::fromValue<qlonglong>(entry.ItemData));
    }
    m_ui->cboGenre->setCurrentIndex(genres.ListIndex);
    m_ui->txtGenre->ShowText(FromQString(m_ui->cboGenre->currentText()));
}

// While the file is only viewed, the genre is a text like the others.
void frmDetails::SetEditMode(EditMode mode) {
    const bool editing = mode == EditMode::Edit;
    for (TagField* field : {m_ui->txtInterpret, m_ui->txtTitle, m_ui->txtAlbum, m_ui->txtYear, m_ui->txtGenre,
                            m_ui->txtComment}) {
        field->SetEditable(editing);
    }
    m_ui->cmdSave->setEnabled(editing);
    m_ui->cmdCancel->setEnabled(editing);
    m_ui->cmdEdit->setEnabled(!editing);
    m_ui->cmdOK->setEnabled(!editing);
    m_ui->optID3V1->setEnabled(editing);
    m_ui->optID3V2->setEnabled(editing);
    ShowGenreBox(editing && !m_file.IsOgg() && !m_ui->optID3V2->isChecked());
}

// One goes before the other comes: the dialog would grow to have room for both.
void frmDetails::ShowGenreBox(bool shown) {
    QWidget* const comes = shown ? static_cast<QWidget*>(m_ui->cboGenre) : m_ui->txtGenre;
    QWidget* const goes = shown ? static_cast<QWidget*>(m_ui->txtGenre) : m_ui->cboGenre;
    goes->hide();
    comes->show();
    m_ui->Label5->setBuddy(comes);
}

// They say nothing of an Ogg file, whose genre is what was typed.
void frmDetails::OptionChosen(bool id3v1) {
    if (m_showing || m_file.IsOgg()) {
        return;
    }
    if (id3v1) {
        FillDetailsGenres();
    }
    ShowGenreBox(id3v1);
}

void frmDetails::cmdEdit_Click() {
    OneAtATime([this] {
        SetEditMode(EditMode::Edit);
        m_ui->txtInterpret->setFocus();
        m_ui->txtInterpret->selectAll();
    });
}

// A file that has vanished meanwhile is shown as it was read last.
void frmDetails::cmdCancel_Click() {
    OneAtATime([this] {
        SetEditMode(EditMode::View);
        services.events->DoEvents();
        try {
            LoadDetails();
        } catch (const RuntimeError& failure) {
            if (failure.Number() != ErrorNumber::FileNotFound) {
                throw;
            }
            ShowDetails();
            ShowBox(Texts::DetailsFileMissing, Texts::DetailsNotShown, MsgBox::Icon::Exclamation);
        }
    });
}

void frmDetails::cmdSave_Click() {
    OneAtATime([this] { Save(); });
}

void frmDetails::Save() {
    EditedDetails edited;
    edited.Texts = {m_ui->txtTitle->Text(),    m_ui->txtInterpret->Text(), m_ui->txtAlbum->Text(),
                    m_ui->txtYear->Text(),     m_ui->txtGenre->Text(),     m_ui->txtComment->Text(),
                    m_ui->txtPublisher->Text()};
    edited.ToId3v1 = m_ui->optID3V1->isChecked();
    const int index = m_ui->cboGenre->currentIndex();
    if (index >= 0) {
        edited.Genre = m_ui->cboGenre->currentData().toLongLong();
    }
    auto hourglass = std::make_unique<HourglassPointer>();
    if (const auto failure = SaveDetails(m_file, edited)) {
        hourglass.reset();
        ShowSaveFailure(m_file.Path(), *failure); // Everything that was typed is still there.
        return;
    }
    SetEditMode(EditMode::View);
    if (m_file.IsOgg()) {
        return;
    }
    if (edited.ToId3v1) {
        m_file.SetDetailsGenre(static_cast<std::uint8_t>(index)); // NoGenre for none.
        m_ui->txtGenre->ShowText(FromQString(m_ui->cboGenre->currentText()));
    }
    ReloadAfterSave(m_parts.Grid.Selection(), m_parts.Views);
}

void frmDetails::cmdPlay_Click() {
    OneAtATime([this] { PlayCurrentRow(m_parts.Grid.Selection(), m_parts.Player, m_parts.Work); });
}

void frmDetails::lblCover_Click() {
    if (IsEditing()) {
        return;
    }
    OneAtATime([this] {
        std::optional<std::string> key;
        {
            const HourglassPointer hourglass;
            services.events->DoEvents();
            key = CoverKey(m_ui->txtInterpret->Text(), m_ui->txtAlbum->Text());
        }
        if (key) {
            m_parts.ShowCovers(*key);
        }
    });
}

// From a press on the path the mouse drags the file; its text is marked by a double click or the keyboard.
bool frmDetails::DragPath(const QEvent& event) {
    if (event.type() != QEvent::MouseButtonPress && event.type() != QEvent::MouseMove) {
        return false;
    }
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    if (event.type() == QEvent::MouseButtonPress) {
        m_pressed = mouse.position().toPoint();
        return false;
    }
    if (!mouse.buttons().testFlag(Qt::LeftButton)) {
        return false;
    }
    const int distance = (mouse.position().toPoint() - m_pressed).manhattanLength();
    if (distance >= QApplication::startDragDistance()) {
        OneAtATime([this] { DragFiles(*m_ui->txtPath, FilesToOffer({m_file.Path()}), "Play"); });
    }
    return true;
}

// A click on the title's label closes the dialog, though it does not look like it.
bool frmDetails::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_ui->txtPath) {
        return DragPath(*event) || QDialog::eventFilter(watched, event);
    }
    if ((watched == m_ui->Label3 || watched == m_ui->lblCover) &&
        event->type() == QEvent::MouseButtonRelease) {
        const auto& mouse = *static_cast<QMouseEvent*>(event);
        const auto& label = *static_cast<QWidget*>(watched);
        if (mouse.button() == Qt::LeftButton && label.rect().contains(mouse.position().toPoint())) {
            if (watched == m_ui->Label3) {
                reject();
            } else {
                lblCover_Click();
            }
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

// While the file is edited, Escape gives up the editing and not the dialog.
void frmDetails::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && IsEditing()) {
        m_ui->cmdCancel->click();
        return;
    }
    QDialog::keyPressEvent(event);
}

} // namespace quavernet
