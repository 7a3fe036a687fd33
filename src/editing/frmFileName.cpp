#include "editing/frmFileName.h"

#include "adapters/qt/NameText.h"
#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/LongWork.h"
#include "app/ShowBox.h"
#include "editing/CleanUpButtons.h"
#include "help/HelpKey.h"
#include "ui_frmFileName.h"
#include "widgets/Mnemonics.h"
#include "widgets/NeverMinimized.h"
#include "widgets/TitleRoom.h"

namespace quavernet {

frmFileName::frmFileName(QWidget* owner, LongWork& work)
    : QDialog(owner), m_ui(std::make_unique<Ui::frmFileName>()), m_work(work) {
    m_ui->setupUi(this);
    new TitleRoom(this);
    LoadStrings();
    m_ui->txtFileName->setText(ToNameText(m_editor.OldName()));
    m_ui->txtFileName->setFocus();
    ConnectControls();
    MarkMnemonics(*this);
    new NeverMinimized(this);
    new HelpKey(this);
}

frmFileName::~frmFileName() = default;

void frmFileName::LoadStrings() {
    setWindowTitle(ToQString(LoadResString(531)));
    m_ui->Frame1->setTitle(ToQString(LoadResString(530)));
    m_ui->txtFileName->setAccessibleName(m_ui->Frame1->title());
    m_ui->cmsSave->setText(ToQString(LoadResString(110)));
    m_ui->cmdCancel->setText(ToQString(LoadResString(102)));
}

void frmFileName::ConnectControls() {
    PrepareCleanUpButtons(
        {m_ui->cmdChangeUmlaute, m_ui->cmdRemoveBrakets, m_ui->cmdRemoveNumbers, m_ui->cmdReplaceUnderscore},
        [this](const CleanUp& cleanUp) {
            const std::string name = FromNameText(m_ui->txtFileName->text());
            m_ui->txtFileName->setText(ToNameText(cleanUp(name)));
        });
    connect(m_ui->cmsSave, &QPushButton::clicked, this, &frmFileName::cmsSave_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

// The dialog stays open: the next save starts from the new name.
void frmFileName::cmsSave_Click() {
    std::string text = FromNameText(m_ui->txtFileName->text());
    if (const auto refusal = m_editor.cmsSave_Click(text, m_work)) {
        ShowBox(*refusal, 340, MsgBox::Icon::Critical);
        return;
    }
    m_ui->txtFileName->setText(ToNameText(text));
}

} // namespace quavernet
