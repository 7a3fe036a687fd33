#include "output/frmKonvertOptions.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "help/HelpKey.h"
#include "output/KonvertSettings.h"
#include "ui_frmKonvertOptions.h"
#include "widgets/Mnemonics.h"
#include "widgets/NeverMinimized.h"
#include "widgets/TitleRoom.h"

namespace quavernet {

frmKonvertOptions::frmKonvertOptions(QWidget* owner)
    : QDialog(owner), m_ui(std::make_unique<Ui::frmKonvertOptions>()) {
    m_ui->setupUi(this);
    new TitleRoom(this);
    new NeverMinimized(this);
    LoadStrings();
    Form_Load();
    connect(m_ui->cmdBrowse, &QPushButton::clicked, this, &frmKonvertOptions::cmdBrowse_Click);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    new HelpKey(this);
}

frmKonvertOptions::~frmKonvertOptions() = default;

void frmKonvertOptions::LoadStrings() {
    setWindowTitle(ToQString(LoadResString(542)));
    m_ui->Label2->setText(ToQString(LoadResString(534)));
    m_ui->cmdBrowse->setText(ToQString(LoadResString(117)));
    m_ui->Label1->setText(ToQString(LoadResString(535)));
    m_ui->optStereo->setText(ToQString(LoadResString(536)));
    m_ui->optMono->setText(ToQString(LoadResString(537)));
    m_ui->chkCombine->setText(ToQString(LoadResString(538)));
    m_ui->chkNoGap->setText(ToQString(LoadResString(539)));
    m_ui->chkDelete->setText(ToQString(LoadResString(540)));
    m_ui->chkShowKonvert->setText(ToQString(LoadResString(541)));
    m_ui->cmdOK->setText(ToQString(LoadResString(101)));
    MarkMnemonics(*this);
}

void frmKonvertOptions::Form_Load() {
    const KonvertOptions options = LoadKonvertOptions();
    for (const std::string_view rate : Konvert::Bitrates) {
        m_ui->cboBitrates->addItem(ToQString(rate));
    }
    m_ui->cboBitrates->setCurrentIndex(m_ui->cboBitrates->findText(ToQString(options.cboBitrates)));
    ShowTarget(options.txtTarget);
    m_ui->optStereo->setChecked(options.optStereo);
    m_ui->optMono->setChecked(options.optMono);
    m_ui->chkCombine->setChecked(options.chkCombine);
    m_ui->chkNoGap->setChecked(options.chkNoGap);
    m_ui->chkDelete->setChecked(options.chkDelete);
    m_ui->chkShowKonvert->setChecked(options.chkShowKonvert);
}

void frmKonvertOptions::Form_Unload() {
    SaveKonvertOptions({.txtTarget = Target(),
                        .cboBitrates = FromQString(m_ui->cboBitrates->currentText()),
                        .optStereo = m_ui->optStereo->isChecked(),
                        .optMono = m_ui->optMono->isChecked(),
                        .chkCombine = m_ui->chkCombine->isChecked(),
                        .chkNoGap = m_ui->chkNoGap->isChecked(),
                        .chkDelete = m_ui->chkDelete->isChecked(),
                        .chkShowKonvert = m_ui->chkShowKonvert->isChecked()});
}

void frmKonvertOptions::done(int result) {
    Form_Unload();
    QDialog::done(result);
}

void frmKonvertOptions::cmdBrowse_Click() {
    if (const auto path = BrowseTarget()) {
        ShowTarget(*path);
    }
}

void frmKonvertOptions::ShowTarget(const std::string& path) {
    m_target = path;
    m_ui->txtTarget->setText(ToQString(path));
    m_shownTarget = m_ui->txtTarget->text();
}

// A path that the box can't show as it is keeps its bytes as long as nobody edits it.
std::string frmKonvertOptions::Target() const {
    const QString shown = m_ui->txtTarget->text();
    return shown == m_shownTarget ? m_target : FromQString(shown);
}

} // namespace quavernet
