#include "scanner/frmScanpath.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "help/HelpKey.h"
#include "scanner/ScanPathSettings.h"
#include "ui_frmScanpath.h"
#include "widgets/Mnemonics.h"
#include "widgets/NeverMinimized.h"
#include "widgets/TitleRoom.h"

#include <QLayout>

namespace quavernet {

frmScanpath::frmScanpath(QWidget* owner) : QDialog(owner), m_ui(std::make_unique<Ui::frmScanpath>()) {
    m_ui->setupUi(this);
    new TitleRoom(this);
    new NeverMinimized(this);
    LoadStrings();
    const ScanPathSettings settings = LoadScanPathSettings();
    m_ui->chkScanPath->setChecked(settings.ScanpathValue);
    ShowPath(settings.Scanpath);
    // The wrapped text is as high as its lines at this width, and no higher.
    resize(minimumWidth(), layout()->totalHeightForWidth(minimumWidth()));
    m_ui->chkScanPath->setFocus();
    connect(m_ui->cmdBrowse, &QPushButton::clicked, this, &frmScanpath::cmdBrowse_Click);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmScanpath::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    new HelpKey(this);
}

frmScanpath::~frmScanpath() = default;

void frmScanpath::LoadStrings() {
    setWindowTitle(ToQString(LoadResString(583)));
    m_ui->cmdBrowse->setText(ToQString(LoadResString(117)));
    m_ui->cmdOK->setText(ToQString(LoadResString(101)));
    m_ui->cmdCancel->setText(ToQString(LoadResString(102)));
    m_ui->chkScanPath->setText(ToQString(LoadResString(581)));
    m_ui->Label2->setText(ToQString(LoadResString(582)));
    m_ui->txtScanpath->setAccessibleName(windowTitle());
    MarkMnemonics(*this);
}

void frmScanpath::ShowPath(const std::string& path) {
    m_path = path;
    m_ui->txtScanpath->setText(ToQString(path));
}

// A path that is not UTF-8 keeps its bytes as long as nobody edits the shown text.
std::string frmScanpath::Path() const {
    const QString shown = m_ui->txtScanpath->text();
    return shown == ToQString(m_path) ? m_path : FromQString(shown);
}

void frmScanpath::cmdBrowse_Click() {
    if (const auto path = BrowseScanPath()) {
        ShowPath(*path);
    }
}

void frmScanpath::cmdOK_Click() {
    if (SaveScanPathSettings({m_ui->chkScanPath->isChecked(), Path()})) {
        accept();
    } else {
        m_ui->txtScanpath->setFocus(); // What was wrong is put right there.
    }
}

} // namespace quavernet
