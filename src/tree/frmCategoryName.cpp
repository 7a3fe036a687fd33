#include "tree/frmCategoryName.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/MayAct.h"
#include "help/HelpKey.h"
#include "ui_frmCategoryName.h"
#include "widgets/EnterKey.h"
#include "widgets/Mnemonics.h"
#include "widgets/NeverMinimized.h"
#include "widgets/TitleRoom.h"

#include <utility>

namespace quavernet {

frmCategoryName::frmCategoryName(QWidget* owner, std::vector<std::string> files, LibraryViews& views)
    : QDialog(owner), m_ui(std::make_unique<Ui::frmCategoryName>()), m_files(std::move(files)),
      m_views(views) {
    m_ui->setupUi(this);
    new TitleRoom(this);
    LoadStrings();
    m_ui->txtCategoryName->setFocus();
    connect(m_ui->cmdFinish, &QPushButton::clicked, this, [this] {
        if (MayAct()) {
            cmdFinish_Click();
        }
    });
    connect(m_ui->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    new EnterKey(m_ui->txtCategoryName, [this] { EnterPressed(); });
    new NeverMinimized(this);
    new HelpKey(this);
}

frmCategoryName::~frmCategoryName() = default;

void frmCategoryName::LoadStrings() {
    setWindowTitle(ToQString(LoadResString(311)));
    m_ui->txtCategoryName->setAccessibleName(windowTitle());
    m_ui->cmdFinish->setText(ToQString(LoadResString(104)));
    m_ui->cmdCancel->setText(ToQString(LoadResString(102)));
    MarkMnemonics(*this);
}

// The button leaves the dialog open, so that another category can be made of the same files.
CategoryFinish frmCategoryName::cmdFinish_Click() {
    const CategoryFinish finish =
        FinishCategory(FromQString(m_ui->txtCategoryName->text()), m_files, m_views);
    if (finish == CategoryFinish::NameMissing) {
        m_ui->txtCategoryName->setFocus();
    }
    return finish;
}

// The key closes the dialog, also after the two refusals. A name that the library does not take leaves it
// open for another one.
void frmCategoryName::EnterPressed() {
    if (!MayAct()) {
        return; // The scan of a reminder may run over the open dialog: nothing is written then.
    }
    const CategoryFinish finish = cmdFinish_Click();
    services.events->DoEvents();
    if (finish != CategoryFinish::NameRefused) {
        accept();
    }
}

} // namespace quavernet
