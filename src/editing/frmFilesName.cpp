#include "editing/frmFilesName.h"

#include "adapters/qt/NameText.h"
#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/ShowBox.h"
#include "editing/CleanUpButtons.h"
#include "help/HelpKey.h"
#include "ui_frmFilesName.h"
#include "widgets/EnterKey.h"
#include "widgets/KeyCodes.h"
#include "widgets/Mnemonics.h"
#include "widgets/NeverMinimized.h"
#include "widgets/TitleRoom.h"

#include <cstddef>

namespace quavernet {

frmFilesName::frmFilesName(QWidget* owner, LongWork& work)
    : QDialog(owner), m_ui(std::make_unique<Ui::frmFilesName>()), m_work(work) {
    m_ui->setupUi(this);
    new TitleRoom(this);
    LoadStrings();
    FillList();
    m_ui->lstFileNames->setFocus();
    ConnectControls();
    new NeverMinimized(this);
    MarkMnemonics(*this);
    new HelpKey(this);
}

frmFilesName::~frmFilesName() = default;

void frmFilesName::LoadStrings() {
    setWindowTitle(ToQString(LoadResString(533)));
    m_ui->Frame1->setTitle(ToQString(LoadResString(532)));
    m_ui->lstFileNames->setAccessibleName(m_ui->Frame1->title());
    m_ui->txtChangeName->setAccessibleName(ToQString(LoadResString(116)));
    m_ui->cmdChangeName->setText(ToQString(LoadResString(116)));
    m_ui->cmdSave->setText(ToQString(LoadResString(110)));
    m_ui->cmdCancel->setText(ToQString(LoadResString(102)));
}

void frmFilesName::ConnectControls() {
    PrepareCleanUpButtons(
        {m_ui->cmdChangeUmlauts, m_ui->cmdRemoveBrakets, m_ui->cmdRemoveNumbers, m_ui->cmdReplaceUnderscore},
        [this](const CleanUp& cleanUp) {
            m_editor.CleanUpAll(cleanUp);
            for (int index = 0; index < m_ui->lstFileNames->count(); ++index) {
                ShowName(index);
            }
        });
    connect(m_ui->lstFileNames, &QListWidget::itemSelectionChanged, this, &frmFilesName::ListClick);
    connect(m_ui->lstFileNames, &QListWidget::itemClicked, this, &frmFilesName::ListClick);
    connect(m_ui->cmdChangeName, &QPushButton::clicked, this, &frmFilesName::cmdChangeName_Click);
    connect(m_ui->cmdSave, &QPushButton::clicked, this, [this] { m_editor.cmdSave_Click(m_work); });
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    m_ui->lstFileNames->installEventFilter(this);
    new EnterKey(m_ui->txtChangeName, [this] { cmdChangeName_Click(); });
    // In the list Enter leads to the field: all files at once are renamed by the button alone.
    new EnterKey(m_ui->lstFileNames, [this] { m_ui->txtChangeName->setFocus(); });
}

void frmFilesName::FillList() {
    for (const EditedName& item : m_editor.Items()) {
        auto* shown = new QListWidgetItem(ToLine(item.Name), m_ui->lstFileNames);
        shown->setData(Qt::UserRole, item.Row);
    }
}

void frmFilesName::ShowName(int index) {
    const EditedName& item = m_editor.Items()[static_cast<std::size_t>(index)];
    m_ui->lstFileNames->item(index)->setText(ToLine(item.Name));
}

// An item stays selected until another one is: the toolkit takes the mark away at a click with Ctrl.
void frmFilesName::ListClick() {
    const QModelIndexList selected = m_ui->lstFileNames->selectionModel()->selectedIndexes();
    if (selected.isEmpty()) {
        m_ui->lstFileNames->setCurrentRow(m_editor.ListIndex());
        return;
    }
    m_ui->txtChangeName->setText(ToNameText(m_editor.ListClick(selected.constFirst().row())));
}

void frmFilesName::cmdChangeName_Click() {
    std::string text = FromNameText(m_ui->txtChangeName->text());
    if (const auto refusal = m_editor.cmdChangeName_Click(text)) {
        ShowBox(*refusal, 340, MsgBox::Icon::Critical);
        return;
    }
    if (m_editor.ListIndex() != FileNamesEditor::None) {
        m_ui->txtChangeName->setText(ToNameText(text));
        ShowName(m_editor.ListIndex());
    }
}

// The keyboard's place in the list is on the first item before anybody has selected one: an arrow then
// selects that one.
bool frmFilesName::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_ui->lstFileNames && event->type() == QEvent::KeyPress &&
        m_editor.ListIndex() == FileNamesEditor::None) {
        const int key = KeyCode(static_cast<const QKeyEvent&>(*event));
        if (key == Keys::Up || key == Keys::Down) {
            m_ui->lstFileNames->setCurrentRow(0);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace quavernet
