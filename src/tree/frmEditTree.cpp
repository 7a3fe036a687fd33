#include "tree/frmEditTree.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "help/HelpKey.h"
#include "ui_frmEditTree.h"
#include "widgets/EnterKey.h"
#include "widgets/NeverMinimized.h"

namespace quavernet {

frmEditTree::frmEditTree(QWidget* owner) : QDialog(owner), m_ui(std::make_unique<Ui::frmEditTree>()) {
    m_ui->setupUi(this);
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
    m_ui->cmdNew->setText(ToQString(LoadResString(111)));
    m_ui->cmdEdit->setText(ToQString(LoadResString(109)));
    m_ui->cmdDelete->setText(ToQString(LoadResString(107)));
    m_ui->cmdSave->setText(ToQString(LoadResString(110)));
    m_ui->cmdOK->setText(ToQString(LoadResString(101)));
}

void frmEditTree::ConnectControls() {
    connect(m_ui->cmdNew, &QPushButton::clicked, this, &frmEditTree::cmdNew_Click);
    connect(m_ui->cmdEdit, &QPushButton::clicked, this, &frmEditTree::cmdEdit_Click);
    connect(m_ui->cmdSave, &QPushButton::clicked, this, &frmEditTree::cmdSave_Click);
    connect(m_ui->cmdDelete, &QPushButton::clicked, this, &frmEditTree::cmdDelete_Click);
    connect(m_ui->cmdOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_ui->lstCategories, &QListWidget::itemSelectionChanged, this, &frmEditTree::ListClick);
    m_ui->lstCategories->viewport()->installEventFilter(this);
    new EnterKey(m_ui->lstCategories, [this] { cmdNew_Click(); });
    new EnterKey(m_ui->txtEdit, [this] { cmdSave_Click(); });
}

void frmEditTree::ShowState() {
    m_showing = true;
    m_ui->lstCategories->setCurrentRow(m_editor.ListIndex());
    if (FromQString(m_ui->txtEdit->text()) != m_editor.EditText()) {
        m_ui->txtEdit->ShowName(ToQString(m_editor.EditText()));
    }
    m_ui->txtEdit->setEnabled(m_editor.CanType());
    m_ui->cmdSave->setEnabled(m_editor.CanType());
    m_ui->cmdNew->setEnabled(m_editor.CanNew());
    m_ui->cmdEdit->setEnabled(m_editor.CanChange());
    m_ui->cmdDelete->setEnabled(m_editor.CanChange());
    m_showing = false;
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

// The keyboard's place in the list is no selection: it is on the first category before anybody has chosen
// one.
void frmEditTree::ListClick() {
    if (!m_showing) {
        const QModelIndexList selected = m_ui->lstCategories->selectionModel()->selectedIndexes();
        m_editor.ListClick(selected.isEmpty() ? CategoryEditor::None : selected.constFirst().row());
        ShowState();
    }
}

void frmEditTree::cmdNew_Click() {
    m_editor.cmdNew_Click();
    ShowState();
    m_ui->txtEdit->setFocus();
}

void frmEditTree::cmdEdit_Click() {
    m_editor.cmdEdit_Click();
    ShowState();
    m_ui->txtEdit->setFocus();
    m_ui->txtEdit->selectAll();
}

void frmEditTree::EditCategory(const std::string& name) {
    m_editor.EditCategory(name);
    ShowState();
    m_ui->txtEdit->setFocus();
    m_ui->txtEdit->selectAll();
}

void frmEditTree::cmdSave_Click() {
    m_editor.cmdSave_Click(FromQString(m_ui->txtEdit->text()));
    FillList();
}

void frmEditTree::cmdDelete_Click() {
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

// A press comes before the selection that it makes.
bool frmEditTree::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::MouseButtonPress) {
        m_editor.ListMouseDown();
        ShowState();
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace quavernet
