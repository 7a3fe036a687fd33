#include "tree/frmEditTree.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/MayAct.h"
#include "app/ShowBox.h"
#include "app/TextNumbers.h"
#include "help/HelpKey.h"
#include "ui_frmEditTree.h"
#include "widgets/EnterKey.h"
#include "widgets/KeyCodes.h"
#include "widgets/Mnemonics.h"
#include "widgets/NeverMinimized.h"
#include "widgets/TitleRoom.h"

namespace quavernet {

frmEditTree::frmEditTree(QWidget* owner) : QDialog(owner), m_ui(std::make_unique<Ui::frmEditTree>()) {
    m_ui->setupUi(this);
    new TitleRoom(this);
    LoadStrings();
    FillList();
    ConnectControls();
    m_ui->lstCategories->setFocus();
    new NeverMinimized(this);
    new HelpKey(this);
}

frmEditTree::~frmEditTree() = default;

void frmEditTree::LoadStrings() {
    setWindowTitle(ToQString(LoadResString(529)));
    m_ui->Label1->setText(ToQString(LoadResString(528)));
    m_ui->lstCategories->setAccessibleName(m_ui->Label1->text());
    m_ui->txtEdit->setAccessibleName(ToQString(LoadResString(Texts::CategoryName)));
    m_ui->cmdNew->setText(ToQString(LoadResString(111)));
    m_ui->cmdEdit->setText(ToQString(LoadResString(109)));
    m_ui->cmdDelete->setText(ToQString(LoadResString(107)));
    m_ui->cmdSave->setText(ToQString(LoadResString(110)));
    m_ui->cmdOK->setText(ToQString(LoadResString(101)));
    MarkMnemonics(*this);
}

void frmEditTree::ConnectControls() {
    connect(m_ui->cmdNew, &QPushButton::clicked, this, &frmEditTree::cmdNew_Click);
    connect(m_ui->cmdEdit, &QPushButton::clicked, this, &frmEditTree::cmdEdit_Click);
    connect(m_ui->cmdSave, &QPushButton::clicked, this, &frmEditTree::cmdSave_Click);
    connect(m_ui->cmdDelete, &QPushButton::clicked, this, &frmEditTree::cmdDelete_Click);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->lstCategories, &QListWidget::itemSelectionChanged, this, &frmEditTree::ListClick);
    m_ui->lstCategories->installEventFilter(this);
    m_ui->lstCategories->viewport()->installEventFilter(this);
    new EnterKey(m_ui->lstCategories, [this] { cmdNew_Click(); });
    new EnterKey(m_ui->txtEdit, [this] { cmdSave_Click(); });
}

void frmEditTree::ShowState() {
    m_showing = true;
    m_ui->lstCategories->setCurrentRow(m_editor.ListIndex());
    m_ui->txtEdit->setEnabled(m_editor.CanType());
    m_ui->cmdSave->setEnabled(m_editor.CanType());
    m_ui->cmdNew->setEnabled(m_editor.CanNew());
    m_ui->cmdEdit->setEnabled(m_editor.CanEditOrDelete());
    m_ui->cmdDelete->setEnabled(m_editor.CanEditOrDelete());
    m_showing = false;
}

// What is being typed stays but for this.
void frmEditTree::ShowText() {
    m_ui->txtEdit->ShowName(ToQString(m_editor.EditText()));
}

void frmEditTree::FillList() {
    QStringList names;
    for (const std::string& name : m_editor.Categories()) {
        names.append(ToLine(name));
    }
    m_showing = true;
    m_ui->lstCategories->clear();
    m_ui->lstCategories->addItems(names);
    ShowState();
}

// A category stays selected until another one is: the toolkit takes the mark away at a click with Ctrl.
void frmEditTree::ListClick() {
    const QModelIndexList selected = m_ui->lstCategories->selectionModel()->selectedIndexes();
    if (!m_showing && !selected.isEmpty()) {
        m_editor.ListClick(selected.constFirst().row());
    }
    if (!m_showing) {
        ShowState();
    }
}

void frmEditTree::cmdNew_Click() {
    m_editor.cmdNew_Click();
    ShowState();
    ShowText();
    m_ui->txtEdit->setFocus();
}

void frmEditTree::cmdEdit_Click() {
    m_editor.cmdEdit_Click();
    BeginEditing();
}

void frmEditTree::EditCategory(const std::string& name) {
    m_editor.EditCategory(name);
    BeginEditing();
}

void frmEditTree::BeginEditing() {
    ShowState();
    ShowText();
    m_ui->txtEdit->setFocus();
    m_ui->txtEdit->selectAll();
}

// The scan of a reminder may run over the open dialog: nothing is written then.
void frmEditTree::cmdSave_Click() {
    if (!MayAct()) {
        return;
    }
    if (const auto refusal = m_editor.cmdSave_Click(FromQString(m_ui->txtEdit->text()))) {
        FillList(); // Another program may have changed it.
        ShowBox(*refusal, 337, MsgBox::Icon::Critical);
        return;
    }
    // Not to cmdOK, where the keyboard would go from the field: the next Return begins another category.
    m_ui->lstCategories->setFocus();
    FillList();
    ShowText();
}

void frmEditTree::cmdDelete_Click() {
    if (!MayAct()) {
        return;
    }
    m_editor.cmdDelete_Click();
    FillList();
}

// Whenever the keyboard comes back to the dialog, it is the field's, as long as it can be typed in.
void frmEditTree::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow()) {
        m_ui->txtEdit->setFocus();
    }
}

// The keyboard's place in the list is on the first category before anybody has selected one: an arrow then
// selects that one.
bool frmEditTree::SelectsFirst(const QEvent& event) const {
    if (event.type() != QEvent::KeyPress || m_editor.ListIndex() != CategoryEditor::None) {
        return false;
    }
    const int key = KeyCode(static_cast<const QKeyEvent&>(event));
    return key == Keys::Up || key == Keys::Down;
}

bool frmEditTree::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_ui->lstCategories->viewport() && event->type() == QEvent::MouseButtonPress) {
        // Comes before the selection that the press makes.
        m_editor.ListMouseDown();
        ShowState();
        ShowText();
    } else if (watched == m_ui->lstCategories && SelectsFirst(*event)) {
        m_ui->lstCategories->setCurrentRow(0);
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace quavernet
