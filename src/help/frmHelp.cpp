#include "help/frmHelp.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/ShowHelp.h"
#include "ui_frmHelp.h"
#include "widgets/Colours.h"
#include "widgets/FitScreen.h"
#include "widgets/Twips.h"

#include <QApplication>
#include <QKeyEvent>
#include <QStyle>
#include <QWindow>

namespace quavernet {

namespace {

constexpr int ContentsWidth = 290;
constexpr int PlaceRole = Qt::UserRole;

void SetTip(QWidget* control, std::int32_t text) {
    control->setToolTip(ToQString(LoadResString(text)));
    control->setAccessibleName(control->toolTip());
}

/// Hints in empty fields: some dark desktops leave them black. The form's colours are those that the field is
/// about to take over.
void ShadeHint(const QWidget& form, QLineEdit* field) {
    QPalette palette = field->palette();
    palette.setColor(QPalette::PlaceholderText, ColourOf(OwnColour::Hint, form.palette()));
    field->setPalette(palette);
}

} // namespace

frmHelp::frmHelp() : m_ui(std::make_unique<Ui::frmHelp>()) {
    m_ui->setupUi(this);
    setWindowIcon(QIcon(QStringLiteral(":/icons/quavernet.svg")));
    m_ui->cmdBack->setIcon(style()->standardIcon(QStyle::SP_ArrowBack));
    m_ui->cmdForward->setIcon(style()->standardIcon(QStyle::SP_ArrowForward));
    m_ui->cmdContents->setIcon(style()->standardIcon(QStyle::SP_FileDialogContentsView));
    m_ui->splitter->setStretchFactor(1, 1);
    FitScreen(*this, size() * TwipScale(font()));
    m_ui->splitter->setSizes({ContentsWidth, width() - ContentsWidth});
    m_ui->lstResults->hide();
    m_ui->cmdBack->setEnabled(false);
    m_ui->cmdForward->setEnabled(false);
    ShadeHint(*this, m_ui->txtFind);
    ShadeHint(*this, m_ui->txtSearchAll);
    Wire();
}

frmHelp::~frmHelp() = default;

void frmHelp::Wire() {
    HelpBrowser* page = m_ui->txtPage;
    connect(m_ui->cmdBack, &QToolButton::clicked, page, &QTextBrowser::backward);
    connect(m_ui->cmdForward, &QToolButton::clicked, page, &QTextBrowser::forward);
    connect(m_ui->cmdContents, &QToolButton::clicked, this, [this] { ShowPage(m_file, {}); });
    connect(page, &QTextBrowser::backwardAvailable, m_ui->cmdBack, &QWidget::setEnabled);
    connect(page, &QTextBrowser::forwardAvailable, m_ui->cmdForward, &QWidget::setEnabled);
    connect(page, &QTextBrowser::sourceChanged, this, &frmHelp::PageShown);
    connect(m_ui->treContents, &QTreeWidget::currentItemChanged, this,
            [this](const QTreeWidgetItem* item) { OpenEntry(item); });
    connect(m_ui->txtSearchAll, &QLineEdit::textChanged, this, &frmHelp::SearchAllPages);
    connect(m_ui->lstResults, &QListWidget::currentItemChanged, this,
            [this](const QListWidgetItem* item) { OpenResult(item); });
    connect(m_ui->txtFind, &QLineEdit::textEdited, m_ui->lblFound, &QLabel::clear);
    connect(m_ui->cmdFindNext, &QToolButton::clicked, this, [this] { FindInPage(false); });
    connect(m_ui->cmdFindPrevious, &QToolButton::clicked, this, [this] { FindInPage(true); });
}

void frmHelp::LoadStrings() {
    setWindowTitle(ToQString(LoadResString(701)));
    SetTip(m_ui->cmdBack, 702);
    SetTip(m_ui->cmdForward, 703);
    SetTip(m_ui->cmdContents, 704);
    SetTip(m_ui->treContents, 704);
    SetTip(m_ui->txtFind, 705);
    m_ui->txtFind->setPlaceholderText(m_ui->txtFind->toolTip());
    SetTip(m_ui->cmdFindPrevious, 706);
    SetTip(m_ui->cmdFindNext, 707);
    SetTip(m_ui->txtSearchAll, 708);
    m_ui->txtSearchAll->setPlaceholderText(m_ui->txtSearchAll->toolTip());
    m_ui->lstResults->setAccessibleName(ToQString(LoadResString(710)));
    m_ui->lblFound->clear();
}

void frmHelp::ShowPage(const std::string& file, const std::string& page) {
    OpenSet(file);
    const QUrl place = m_set.Find(page);
    if (!place.isEmpty()) {
        m_ui->txtPage->setSource(place);
    }
    ComeUp();
}

void frmHelp::OpenSet(const std::string& file) {
    if (file == m_file) {
        return;
    }
    m_file = file;
    m_set = HelpSet(file);
    LoadStrings();
    const QSignalBlocker silent(m_ui->treContents);
    m_ui->treContents->clear();
    QTreeWidgetItem* chapter = nullptr;
    for (const HelpEntry& entry : m_set.Contents()) {
        auto* item = chapter != nullptr && !entry.Page.isEmpty() ? new QTreeWidgetItem(chapter)
                                                                 : new QTreeWidgetItem(m_ui->treContents);
        item->setText(0, entry.Title);
        item->setData(0, PlaceRole, entry.Page);
        if (entry.Page.isEmpty()) {
            item->setFlags(Qt::ItemIsEnabled);
            chapter = item;
        }
    }
    m_ui->treContents->expandAll();
    m_ui->txtSearchAll->clear();
}

void frmHelp::ComeUp() {
    // A modal form blocks every window but its own: while it is open, the help belongs to it.
    const QWidget* modal = QApplication::activeModalWidget();
    create();
    QWindow* owner = modal != nullptr && modal != this ? modal->window()->windowHandle() : nullptr;
    if (windowHandle()->transientParent() != owner) {
        hide();
        windowHandle()->setTransientParent(owner);
    }
    if (isMinimized()) {
        showNormal();
    } else if (!isVisible()) {
        FitScreen(*this, size()); // The screen may have become another one since.
    }
    show();
    raise();
    activateWindow();
    m_ui->txtPage->setFocus();
}

void frmHelp::FollowLanguage() {
    const std::string file = HelpFile();
    if (file == m_file || !HelpSet(file).Exists()) {
        return;
    }
    const std::string page = m_set.NameOf(m_ui->txtPage->source());
    OpenSet(file);
    m_ui->txtPage->setSource(m_set.Find(page));
    m_ui->txtPage->clearHistory();
}

void frmHelp::PageShown(const QUrl& place) {
    m_ui->lblFound->clear();
    const QSignalBlocker silent(m_ui->treContents);
    QTreeWidgetItem* shown = nullptr;
    for (QTreeWidgetItemIterator item(m_ui->treContents); *item != nullptr; ++item) {
        if ((*item)->data(0, PlaceRole).toUrl() == place.adjusted(QUrl::RemoveFragment)) {
            shown = *item;
        }
    }
    m_ui->treContents->setCurrentItem(shown);
}

void frmHelp::SearchAllPages(const QString& text) {
    const bool searching = !text.trimmed().isEmpty();
    m_ui->lstResults->setVisible(searching);
    m_ui->treContents->setVisible(!searching);
    const QSignalBlocker silent(m_ui->lstResults);
    m_ui->lstResults->clear();
    if (!searching) {
        return;
    }
    for (const HelpEntry& entry : m_set.Search(text)) {
        auto* item = new QListWidgetItem(entry.Title, m_ui->lstResults);
        item->setData(PlaceRole, entry.Page);
    }
    if (m_ui->lstResults->count() == 0) {
        auto* item = new QListWidgetItem(ToQString(LoadResString(709)), m_ui->lstResults);
        item->setFlags(Qt::NoItemFlags);
    }
}

void frmHelp::OpenResult(const QListWidgetItem* item) {
    if (item == nullptr || item->data(PlaceRole).toUrl().isEmpty()) {
        return;
    }
    m_ui->txtPage->setSource(item->data(PlaceRole).toUrl());
    // What was searched for in all pages is what is looked for in this one.
    m_ui->txtFind->setText(m_ui->txtSearchAll->text().simplified());
    FindInPage(false);
}

void frmHelp::OpenEntry(const QTreeWidgetItem* item) {
    if (item != nullptr && !item->data(0, PlaceRole).toUrl().isEmpty()) {
        m_ui->txtPage->setSource(item->data(0, PlaceRole).toUrl());
    }
}

void frmHelp::FindInPage(bool backwards) {
    const QString text = m_ui->txtFind->text();
    m_ui->lblFound->clear();
    if (text.isEmpty()) {
        return;
    }
    const QTextDocument::FindFlags flags =
        backwards ? QTextDocument::FindBackward : QTextDocument::FindFlags();
    if (m_ui->txtPage->find(text, flags)) {
        return;
    }
    // From the other end once more, before the text counts as missing.
    const QTextCursor before = m_ui->txtPage->textCursor();
    m_ui->txtPage->moveCursor(backwards ? QTextCursor::End : QTextCursor::Start);
    if (!m_ui->txtPage->find(text, flags)) {
        m_ui->txtPage->setTextCursor(before);
        m_ui->lblFound->setText(ToQString(LoadResString(709)));
    }
}

void frmHelp::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    // The program may have taken on another language while the window was open.
    if (event->type() == QEvent::LanguageChange || event->type() == QEvent::ActivationChange) {
        FollowLanguage();
    } else if (event->type() == QEvent::PaletteChange) {
        ShadeHint(*this, m_ui->txtFind);
        ShadeHint(*this, m_ui->txtSearchAll);
    }
}

// Plus, minus and 0 are on some keyboards reached with the shift key only, and they are on the keypad too.
bool frmHelp::ZoomByKey(const QKeyEvent& event) {
    if ((event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) != Qt::ControlModifier) {
        return false;
    }
    switch (event.key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        m_ui->txtPage->zoomIn();
        return true;
    case Qt::Key_Minus:
    case Qt::Key_Underscore:
        m_ui->txtPage->zoomOut();
        return true;
    case Qt::Key_0:
        m_ui->txtPage->ResetZoom();
        return true;
    default:
        return false;
    }
}

void frmHelp::keyPressEvent(QKeyEvent* event) {
    const bool control = event->modifiers() == Qt::ControlModifier;
    const bool alt = event->modifiers() == Qt::AltModifier;
    const bool plain = event->modifiers() == Qt::NoModifier || event->modifiers() == Qt::KeypadModifier;
    const int key = event->key();
    if (key == Qt::Key_Escape && plain) {
        close();
    } else if (control && key == Qt::Key_F) {
        m_ui->txtFind->setFocus();
        m_ui->txtFind->selectAll();
    } else if (event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier) && key == Qt::Key_F) {
        m_ui->txtSearchAll->setFocus();
        m_ui->txtSearchAll->selectAll();
    } else if (key == Qt::Key_F3 ||
               ((key == Qt::Key_Return || key == Qt::Key_Enter) && m_ui->txtFind->hasFocus())) {
        FindInPage(event->modifiers().testFlag(Qt::ShiftModifier));
    } else if ((key == Qt::Key_Return || key == Qt::Key_Enter) && m_ui->txtSearchAll->hasFocus()) {
        m_ui->lstResults->setCurrentRow(0);
        m_ui->lstResults->setFocus();
    } else if (alt && key == Qt::Key_Left) {
        m_ui->txtPage->backward();
    } else if (alt && key == Qt::Key_Right) {
        m_ui->txtPage->forward();
    } else if (alt && key == Qt::Key_Home) {
        ShowPage(m_file, {});
    } else if (!ZoomByKey(*event)) {
        QWidget::keyPressEvent(event);
    }
}

} // namespace quavernet
