#include "mainwindow/frmAbout.h"

#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"
#include "app/Version.h"
#include "help/HelpKey.h"
#include "ui_frmAbout.h"
#include "widgets/Mnemonics.h"
#include "widgets/NeverMinimized.h"
#include "widgets/Pictures.h"
#include "widgets/TitleRoom.h"

namespace quavernet {

namespace {

// What a user who asks for help is asked for.
std::string Facts() {
    const std::string& connection = mainModule.ConnectionString;
    constexpr std::string_view Source = "Data Source=";
    const std::size_t at = connection.find(Source);
    const std::string library = at == std::string::npos ? "" : connection.substr(at + Source.size());
    return LoadResString(Texts::Licence) + "\n\n" + LoadResString(Texts::Toolkit) + qVersion() + "\n" +
           LoadResString(Texts::LibraryPlace) + library + "\n" + LoadResString(Texts::SettingsPlace) +
           services.settings->Place();
}

} // namespace

frmAbout::frmAbout(QWidget* owner) : QDialog(owner), m_ui(std::make_unique<Ui::frmAbout>()) {
    m_ui->setupUi(this);
    new TitleRoom(this);
    new NeverMinimized(this);
    setWindowTitle(ToQString(LoadResString(301)));
    m_ui->picIcon->setPixmap(Picture("quavernet").pixmap(QSize(64, 64), devicePixelRatio()));
    m_ui->cmdOK->setText(ToQString(LoadResString(101)));
    m_ui->cmdSysInfo->setText(ToQString(LoadResString(103)));
    m_ui->lblVersion->setText(ToQString(LoadResString(302) + " " + VersionNumbers()));
    m_ui->lblFacts->setText(ToQString(Facts()));
    m_ui->cmdOK->setFocus();
    MarkMnemonics(*this);
    new HelpKey(this);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->cmdSysInfo, &QPushButton::clicked, this, &frmAbout::StartSysInfo);
}

frmAbout::~frmAbout() = default;

void frmAbout::StartSysInfo() {
    // There is no machine registry to name a system information program, so that it always comes to this
    // box, with the text of the title and not that of number 306.
    services.msgBox->Show(LoadResString(301), "Quavernet", MsgBox::Icon::None, MsgBox::Buttons::Ok);
}

} // namespace quavernet
