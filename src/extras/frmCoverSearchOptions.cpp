#include "extras/frmCoverSearchOptions.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "extras/CoverSearchOptions.h"
#include "help/HelpKey.h"
#include "ui_frmCoverSearchOptions.h"
#include "widgets/Mnemonics.h"
#include "widgets/NeverMinimized.h"
#include "widgets/TitleRoom.h"

#include <QLayout>

namespace quavernet {

frmCoverSearchOptions::frmCoverSearchOptions(QWidget* owner)
    : QDialog(owner), m_ui(std::make_unique<Ui::frmCoverSearchOptions>()) {
    m_ui->setupUi(this);
    new TitleRoom(this);
    new NeverMinimized(this);
    LoadStrings();
    m_ui->txtSearchString->setText(ToQString(ShownSearchTemplate()));
    m_ui->txtSearchString->setCursorPosition(0); // An address is known by its beginning.
    // The wrapped text is as high as its lines at this width, and no higher.
    resize(minimumWidth(), layout()->totalHeightForWidth(minimumWidth()));
    m_ui->txtSearchString->setFocus();
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmCoverSearchOptions::cmdOK_Click);
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    new HelpKey(this);
}

frmCoverSearchOptions::~frmCoverSearchOptions() = default;

void frmCoverSearchOptions::LoadStrings() {
    setWindowTitle(ToQString(LoadResString(510)));
    m_ui->Label1->setText(ToQString(LoadResString(507)));
    m_ui->Label2->setText(ToQString(LoadResString(508)));
    m_ui->Label3->setText(ToQString(LoadResString(509)));
    m_ui->Label4->setText(ToQString(ExampleSearchTemplate()));
    m_ui->cmdOK->setText(ToQString(LoadResString(101)));
    m_ui->cmdCancel->setText(ToQString(LoadResString(102)));
    MarkMnemonics(*this);
}

void frmCoverSearchOptions::cmdOK_Click() {
    SaveSearchTemplate(FromQString(m_ui->txtSearchString->text()));
    accept();
}

} // namespace quavernet
