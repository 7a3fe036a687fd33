#include "playback/frmRandomPlay.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/TextNumbers.h"
#include "help/HelpKey.h"
#include "playback/RandomPlaySettings.h"
#include "ui_frmRandomPlay.h"
#include "widgets/Mnemonics.h"
#include "widgets/NeverMinimized.h"
#include "widgets/TitleRoom.h"

namespace quavernet {

frmRandomPlay::frmRandomPlay(QWidget* owner) : QDialog(owner), m_ui(std::make_unique<Ui::frmRandomPlay>()) {
    m_ui->setupUi(this);
    new TitleRoom(this);
    new NeverMinimized(this);
    LoadStrings();
    connect(m_ui->optAllFiles, &QRadioButton::toggled, this, [this](bool checked) {
        if (checked) {
            optAllFiles_Click();
        }
    });
    connect(m_ui->optFileCount, &QRadioButton::toggled, this, &frmRandomPlay::FileCountChosen);
    // An arrow key chooses the option and gives it the keyboard afterwards.
    connect(m_ui->optFileCount, &QRadioButton::toggled, this, &frmRandomPlay::FileCountChosen,
            Qt::QueuedConnection);
    connect(m_ui->optFileCount, &QRadioButton::clicked, this, &frmRandomPlay::optFileCount_Click);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmRandomPlay::cmdOK_Click);
    Form_Load();
    new HelpKey(this);
}

frmRandomPlay::~frmRandomPlay() = default;

void frmRandomPlay::LoadStrings() {
    setWindowTitle(ToQString(LoadResString(561)));
    m_ui->Frame1->setTitle(ToQString(LoadResString(560)));
    m_ui->cmdOK->setText(ToQString(LoadResString(101)));
    m_ui->optAllFiles->setText(ToQString(LoadResString(Texts::AllFiles)));
    // The box beside it says how many: what sight joins, a screen reader has to be told.
    for (QWidget* part :
         {static_cast<QWidget*>(m_ui->optFileCount), static_cast<QWidget*>(m_ui->txtFileCount)}) {
        part->setAccessibleName(ToQString(LoadResString(560)));
    }
    MarkMnemonics(*this);
}

void frmRandomPlay::Form_Load() {
    const RandomPlaySettings settings = LoadRandomPlaySettings();
    m_ui->txtFileCount->setText(ToQString(settings.txtFileCount));
    (settings.optFileCount ? m_ui->optFileCount : m_ui->optAllFiles)->setChecked(true);
}

void frmRandomPlay::optAllFiles_Click() {
    m_ui->txtFileCount->setEnabled(false);
}

void frmRandomPlay::FileCountChosen() {
    if (m_ui->optFileCount->isChecked()) {
        optFileCount_Click();
    }
}

void frmRandomPlay::optFileCount_Click() {
    m_ui->txtFileCount->setEnabled(true);
    m_ui->txtFileCount->selectAll();
    m_ui->txtFileCount->setFocus();
}

void frmRandomPlay::cmdOK_Click() {
    SaveRandomPlaySettings(m_ui->optFileCount->isChecked(), FromQString(m_ui->txtFileCount->text()));
    accept();
}

} // namespace quavernet
