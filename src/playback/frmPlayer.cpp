#include "playback/frmPlayer.h"

#include "adapters/qt/FileUris.h"
#include "adapters/qt/QtText.h"
#include "app/AudioKind.h"
#include "app/LibraryViews.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/MainWindow.h"
#include "app/MayAct.h"
#include "app/NumberSetting.h"
#include "app/Registry.h"
#include "app/ScopedValue.h"
#include "help/HelpKey.h"
#include "playback/PlayerButtons.h"
#include "playback/PlayerTexts.h"
#include "tree/frmCategoryName.h"
#include "ui_frmPlayer.h"
#include "widgets/DragFiles.h"
#include "widgets/Mnemonics.h"
#include "widgets/Pictures.h"
#include "widgets/ToldPlaces.h"
#include "widgets/Twips.h"

#include <QCloseEvent>
#include <QMimeData>

namespace quavernet {

namespace {

constexpr int TickMs = 100;
constexpr int PositionMargin = 30;
constexpr int VolumeMargin = 200;

// The first file decides about all of a drop.
bool TakesFiles(const std::vector<std::string>& paths) {
    return !paths.empty() && IsAudio(paths.front());
}

} // namespace

frmPlayer::frmPlayer(std::unique_ptr<MediaPlayer> engine, MainWindow& main)
    : m_main(main), m_ui(std::make_unique<Ui::frmPlayer>()), m_engine(std::move(engine)) {
    m_ui->setupUi(this);
    setWindowIcon(Picture("quavernet"));
    // A play request leaves the keyboard with the list that it came from; BringToFront asks for it.
    setAttribute(Qt::WA_ShowWithoutActivating);
    m_queue = std::make_unique<PlayQueue>(*m_engine, static_cast<PlayerView&>(*this));
    m_ui->lstFiles->SetQueue(*m_queue);
    m_buttons = new PlayerButtons(*this);
    DressControls();
    ConnectButtons();
    ConnectList();
    m_timer.setParent(this);
    m_timer.setObjectName(QStringLiteral("Timer1"));
    m_timer.setInterval(TickMs);
    connect(&m_timer, &QTimer::timeout, this, [this] { m_queue->Timer1_Timer(); });
    new HelpKey(this);
}

frmPlayer::~frmPlayer() {
    m_engine->SetEvents(nullptr);
}

void frmPlayer::DressControls() {
    DressPlayer(*m_ui);
    m_ui->Slider1->SetMargin(PositionMargin);
    m_ui->Slider1->ShowMaximum(0);
    m_ui->Slider3->SetMargin(VolumeMargin);
    m_ui->Slider3->ShowMaximum(PlayQueue::LoudestPosition);
    m_ui->lstFiles->viewport()->installEventFilter(this);
    m_ui->lblStatus->hide();
}

void frmPlayer::ConnectButtons() {
    const std::pair<QAbstractButton*, std::function<void()>> clicks[] = {
        {m_ui->cmdPlay, [this] { m_queue->cmdPlay_Click(); }},
        {m_ui->cmdPause, [this] { m_queue->cmdPause_Click(); }},
        {m_ui->cmdStop, [this] { m_queue->cmdStop_Click(); }},
        {m_ui->cmdNext, [this] { m_queue->cmdNext_Click(); }},
        {m_ui->cmdLast, [this] { m_queue->cmdLast_Click(); }},
        {m_ui->cmdRem, [this] { m_queue->cmdRem_Click(); }},
        {m_ui->cmdRemAll, [this] { m_queue->cmdRemAll_Click(); }},
        {m_ui->cmdRandomize, [this] { m_queue->cmdRandomize_Click(); }},
        {m_ui->chkRepeat, [this] { m_queue->chkRepeat_Click(m_ui->chkRepeat->isChecked()); }},
        {m_ui->chkRepeatAll, [this] { m_queue->chkRepeatAll_Click(m_ui->chkRepeatAll->isChecked()); }},
    };
    for (const auto& [button, action] : clicks) {
        connect(button, &QAbstractButton::clicked, this, [this, action] { Act(action); });
    }
    connect(m_ui->cmdLoadPlaylist, &QAbstractButton::clicked, this,
            [this] { Ask([this] { m_queue->cmdLoadPlaylist_Click(); }); });
    connect(m_ui->cmdCreatePlaylist, &QAbstractButton::clicked, this,
            [this] { Ask([this] { m_queue->cmdCreatePlaylist_Click(); }); });
    connect(m_ui->cmdCreateCategory, &QAbstractButton::clicked, this, &frmPlayer::cmdCreateCategory_Click);
    connect(m_ui->cmdMaindialog, &QAbstractButton::clicked, this, &frmPlayer::cmdMaindialog_Click);
    connect(m_ui->cmdMinimize, &QAbstractButton::clicked, this, &QWidget::showMinimized);
    connect(m_ui->Slider1, &PlayerSlider::Moved, this,
            [this](int value) { Act([this, value] { m_queue->Slider1_Scroll(value); }); });
    connect(m_ui->Slider3, &PlayerSlider::Moved, this, [this](int value) { m_queue->Slider3_Scroll(value); });
    connect(m_ui->lblTime, &TimeLabel::DblClick, this,
            [this] { Act([this] { m_queue->lblTime_DblClick(); }); });

    m_add.setObjectName(QStringLiteral("mnuAdd"));
    const std::pair<const char*, void (PlayQueue::*)()> items[] = {
        {"mnuAddFile", &PlayQueue::mnuAddFile_Click}, {"mnuAddFolder", &PlayQueue::mnuAddFolder_Click}};
    for (const auto& [name, command] : items) {
        QAction* item = m_add.addAction(QString());
        item->setObjectName(QLatin1String(name));
        connect(item, &QAction::triggered, this,
                [this, command = command] { Ask([this, command] { (*m_queue.*command)(); }); });
    }
    // Not a menu that waits for its answer: whatever runs goes on while it is open.
    connect(m_ui->cmdAdd, &QAbstractButton::clicked, this,
            [this] { m_add.popup(m_ui->cmdAdd->mapToGlobal(QPoint(0, m_ui->cmdAdd->height()))); });
}

void frmPlayer::ConnectList() {
    m_ui->lstFiles->KeyDown = [this](int code) {
        bool goesOn = true;
        Act([&] { goesOn = m_queue->lstFiles_KeyDown(code); });
        return goesOn;
    };
    connect(m_ui->lstFiles, &PlayerList::DblClick, this,
            [this] { Act([this] { m_queue->lstFiles_DblClick(); }); });
    connect(m_ui->lstFiles, &PlayerList::Click, this,
            [this](std::int32_t position) { m_queue->SetListIndex(position); });
}

void frmPlayer::Form_Load() {
    // First what may fail: a window that can't be placed has never been open.
    m_loadedPlace = {TwipsSetting("WindowLeftPlayer", "180"), TwipsSetting("WindowTopPlayer", "255")};
    move(ToPixels(m_loadedPlace.x()), ToPixels(m_loadedPlace.y()));
    mainModule.PlayerOpen = true;
    m_queue->Form_Load();
    m_engine->SetEvents(this); // What it tells goes on to the queue, and then is shown.
    m_ui->Slider3->ShowValue(PlayQueue::LoudestPosition);
    LoadStrings();
    m_queue->Form_Resize();
    FollowEngine();
    m_ui->lstFiles->setFocus();
}

void frmPlayer::LoadStrings() {
    LoadPlayerStrings(*m_ui, m_add);
    m_buttons->LoadStrings();
    MarkMnemonics(*this);
}

void frmPlayer::Act(const std::function<void()>& action) {
    action();
    FollowEngine();
}

// Shows what has changed while nothing plays once; while the engine plays the timer does it.
void frmPlayer::FollowEngine() {
    if (!m_open) {
        return;
    }
    if (m_engine->IsPlaying()) {
        if (!m_timer.isActive()) {
            m_timer.start();
        }
    } else {
        m_timer.stop();
        m_queue->Timer1_Timer();
    }
    const QString silence = ToLine(m_engine->SilenceReason());
    m_ui->lblStatus->setText(silence);
    m_ui->lblStatus->setVisible(!silence.isEmpty());
}

void frmPlayer::SetCaption(const std::string& text) {
    setWindowTitle(ToLine(text));
}
void frmPlayer::SetFile(const std::string& text, const std::string& toolTip) {
    m_ui->lblFile->setText(ToLine(text));
    m_ui->lblFile->setToolTip(ToLine(toolTip));
}
void frmPlayer::SetQuality(const std::string& text) {
    m_ui->lblQuality->setText(ToLine(text));
}
void frmPlayer::SetTime(const std::string& text) {
    m_ui->lblTime->setText(ToQString(text));
}
void frmPlayer::SetLength(const std::string& text) {
    m_ui->lblLength->setText(ToQString(text));
}
void frmPlayer::SetPercent(const std::string& text) {
    m_ui->lblPercent->setText(ToQString(text));
}
void frmPlayer::SetPositionMax(std::int32_t seconds) {
    m_ui->Slider1->ShowMaximum(seconds);
}
void frmPlayer::SetPosition(std::int32_t seconds) {
    m_ui->Slider1->ShowValue(seconds);
}
void frmPlayer::SetRepeat(bool repeat, bool repeatAll) {
    m_ui->chkRepeat->setChecked(repeat);
    m_ui->chkRepeatAll->setChecked(repeatAll);
}
void frmPlayer::EntriesReset() {
    m_ui->lstFiles->EntriesReset();
}
void frmPlayer::EntriesAppended(std::int32_t) {
    m_ui->lstFiles->EntriesAppended();
}
void frmPlayer::EntryChanged(std::int32_t position) {
    m_ui->lstFiles->EntryChanged(position);
}
void frmPlayer::EntryRemoved(std::int32_t position) {
    m_ui->lstFiles->EntryRemoved(position);
}
void frmPlayer::SelectionMoved() {
    m_ui->lstFiles->SelectionMoved();
}
void frmPlayer::StatusChanged() {
    emit StatusTold();
}

void frmPlayer::Seek(std::int32_t seconds) {
    if (m_ui->Slider1->value() == seconds) {
        Act([&] { m_queue->Slider1_Scroll(seconds); }); // Back to where this second began.
    } else {
        m_ui->Slider1->setValue(seconds);
    }
}

void frmPlayer::SetVolume(std::int32_t value) {
    m_ui->Slider3->setValue(value);
}

void frmPlayer::EndOfStream() {
    Act([this] { m_queue->EndOfStream(); });
}
void frmPlayer::LoadedLate() {
    Act([this] { m_queue->LoadedLate(); });
}
void frmPlayer::RefusedLate() {
    Act([this] { m_queue->RefusedLate(); });
}
void frmPlayer::PlayingChanged() {
    Act([this] { m_queue->PlayingChanged(); });
}

// A dialog would hold up a scan, which waits for its events to return.
void frmPlayer::Ask(const std::function<void()>& action) {
    if (MayAct()) {
        Act(action);
    }
}

void frmPlayer::cmdMaindialog_Click() {
    {
        const ScopedValue silent(mainModule.SuppressComboClick, true);
        m_main.BringToFront();
    }
    // The start fills list and tree by itself, and is silent until it is through.
    const bool mayLoad = MayActOnTree() && !mainModule.SuppressComboClick && !m_bringing;
    if (!mayLoad || !m_main.ListIsEmpty()) {
        return;
    }
    const ScopedValue bringing(m_bringing, true);
    if (!mainModule.LoadOverSearch) {
        m_main.Views().LoadDatabase("");
    }
    m_main.Views().LoadTree();
}

void frmPlayer::cmdCreateCategory_Click() {
    if (!MayActOnTree()) {
        return;
    }
    std::vector<std::string> paths;
    for (std::size_t entry = 1; entry <= m_queue->PathCount(); ++entry) {
        paths.push_back(m_queue->Path(static_cast<std::int32_t>(entry)));
    }
    frmCategoryName(this, std::move(paths), m_main.Views()).exec();
}

void frmPlayer::Form_QueryUnload() {
    if (isMinimized()) {
        showNormal(); // So that the place that is stored next is a real one.
    }
}

void frmPlayer::Form_Unload() {
    m_open = false;
    m_timer.stop();
    mainModule.PlayerOpen = false;
    m_queue->Form_Unload();
    m_engine->SetEvents(nullptr);
    StorePlace();
    if (!mainModule.MainOpen) {
        ExitProgram();
    }
    emit Closed();
}

void frmPlayer::StorePlace() const {
    const QPoint place = PlacesAreTold() ? QPoint(ToTwips(x()), ToTwips(y())) : m_loadedPlace;
    SaveSetting("WindowLeftPlayer", std::to_string(place.x()));
    SaveSetting("WindowTopPlayer", std::to_string(place.y()));
}

void frmPlayer::closeEvent(QCloseEvent* event) {
    event->accept();
    if (m_open) {
        Form_QueryUnload();
        Form_Unload();
    }
}

// Another size alone changes no caption: the layout and the window manager give one, too, and "Pause" would
// be lost.
void frmPlayer::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && m_queue && m_open) {
        m_queue->Form_Resize();
    }
}

// What is dragged stays the same until it leaves: there may be very many files.
void frmPlayer::DragEntered(QDropEvent& event) {
    m_takesDrag = TakesFiles(LocalFiles(*event.mimeData()));
    (void)AnswerDrag(event, m_takesDrag);
}

void frmPlayer::dragEnterEvent(QDragEnterEvent* event) {
    DragEntered(*event);
}

void frmPlayer::dragMoveEvent(QDragMoveEvent* event) {
    (void)AnswerDrag(*event, m_takesDrag);
}

void frmPlayer::dropEvent(QDropEvent* event) {
    const std::vector<std::string> paths = LocalFiles(*event->mimeData());
    if (AnswerDrag(*event, TakesFiles(paths))) {
        Act([&] { m_queue->DropOnWindow(paths); });
    }
}

// Files over the list, and on it.
bool frmPlayer::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::DragEnter:
        DragEntered(*static_cast<QDropEvent*>(event));
        return true;
    case QEvent::DragMove:
        (void)AnswerDrag(*static_cast<QDropEvent*>(event), m_takesDrag);
        return true;
    case QEvent::Drop: {
        auto* drop = static_cast<QDropEvent*>(event);
        const std::vector<std::string> paths = LocalFiles(*drop->mimeData());
        if (AnswerDrag(*drop, TakesFiles(paths))) {
            Act([&] { m_queue->DropOnList(paths); });
        }
        return true;
    }
    default:
        return QWidget::eventFilter(watched, event);
    }
}

} // namespace quavernet
