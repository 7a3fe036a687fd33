#include "scanner/frmRemind.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "help/HelpKey.h"
#include "scanner/ReminderSettings.h"
#include "ui_frmRemind.h"
#include "widgets/Mnemonics.h"
#include "widgets/NeverMinimized.h"
#include "widgets/TitleRoom.h"

namespace quavernet {

frmRemind::frmRemind(QWidget* owner) : QDialog(owner), m_ui(std::make_unique<Ui::frmRemind>()) {
    m_ui->setupUi(this);
    new TitleRoom(this);
    new NeverMinimized(this);
    LoadStrings();
    const ReminderSettings settings = LoadReminderSettings();
    m_ui->chkRemind->setChecked(settings.choice.chkRemind);
    // The design's own choice, daily, holds where the library holds none.
    const ReminderChoice& choice = settings.choice;
    QRadioButton* const stored = choice.optWeekly    ? m_ui->optWeekly
                                 : choice.optMonthly ? m_ui->optMonthly
                                 : choice.optYearly  ? m_ui->optYearly
                                                     : m_ui->optDaily;
    stored->setChecked(true);
    m_ui->lblDate->setText(ToQString(settings.lblDate));
    m_ui->chkRemind->setFocus();
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmRemind::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    new HelpKey(this);
}

frmRemind::~frmRemind() = default;

void frmRemind::LoadStrings() {
    setWindowTitle(ToQString(LoadResString(577)));
    m_ui->cmdCancel->setText(ToQString(LoadResString(102)));
    m_ui->cmdOK->setText(ToQString(LoadResString(110)));
    m_ui->chkRemind->setText(ToQString(LoadResString(571)));
    m_ui->Label1->setText(ToQString(LoadResString(572)));
    m_ui->optDaily->setText(ToQString(LoadResString(573)));
    m_ui->optMonthly->setText(ToQString(LoadResString(574)));
    m_ui->optWeekly->setText(ToQString(LoadResString(575)));
    m_ui->optYearly->setText(ToQString(LoadResString(576)));
    MarkMnemonics(*this);
}

void frmRemind::cmdOK_Click() {
    SaveReminderSettings({m_ui->chkRemind->isChecked(), m_ui->optDaily->isChecked(),
                          m_ui->optWeekly->isChecked(), m_ui->optMonthly->isChecked(),
                          m_ui->optYearly->isChecked()});
    accept();
}

} // namespace quavernet
