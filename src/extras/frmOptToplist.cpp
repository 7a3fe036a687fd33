#include "extras/frmOptToplist.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "extras/TopListOptions.h"
#include "help/HelpKey.h"
#include "ui_frmOptToplist.h"
#include "widgets/EnterKey.h"
#include "widgets/Mnemonics.h"
#include "widgets/NeverMinimized.h"
#include "widgets/TitleRoom.h"

#include <QEvent>

namespace quavernet {

frmOptToplist::frmOptToplist(QWidget* owner) : QDialog(owner), m_ui(std::make_unique<Ui::frmOptToplist>()) {
    m_ui->setupUi(this);
    new TitleRoom(this);
    new NeverMinimized(this);
    LoadStrings();
    m_ui->txtFileCount->setText(ToQString(FileCountTopList()));
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &frmOptToplist::cmdOK_Click);
    new EnterKey(m_ui->txtFileCount, [this] { cmdOK_Click(); });
    new HelpKey(this);
}

frmOptToplist::~frmOptToplist() = default;

void frmOptToplist::LoadStrings() {
    setWindowTitle(ToQString(LoadResString(549)));
    m_ui->Label1->setText(ToQString(LoadResString(547)));
    m_ui->txtFileCount->setAccessibleName(m_ui->Label1->text());
    m_ui->chkResetStatistik->setText(ToQString(LoadResString(548)));
    m_ui->cmdOK->setText(ToQString(LoadResString(101)));
    MarkMnemonics(*this);
}

bool frmOptToplist::event(QEvent* event) {
    const bool handled = QDialog::event(event);
    if (event->type() == QEvent::WindowActivate) {
        Form_Activate();
    }
    return handled;
}

void frmOptToplist::Form_Activate() {
    m_ui->txtFileCount->selectAll();
    m_ui->txtFileCount->setFocus();
}

void frmOptToplist::cmdOK_Click() {
    if (SaveTopListOptions(FromQString(m_ui->txtFileCount->text()), m_ui->chkResetStatistik->isChecked())) {
        accept();
    }
}

} // namespace quavernet
