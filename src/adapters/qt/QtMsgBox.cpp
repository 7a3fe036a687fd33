#include "adapters/qt/QtMsgBox.h"

#include "adapters/qt/QtText.h"
#include "app/LoadResString.h"
#include "app/TextNumbers.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

namespace quavernet {

namespace {

QMessageBox::Icon QtIcon(MsgBox::Icon icon) {
    switch (icon) {
    case MsgBox::Icon::Critical:
        return QMessageBox::Critical;
    case MsgBox::Icon::Question:
        return QMessageBox::Question;
    case MsgBox::Icon::Exclamation:
        return QMessageBox::Warning;
    case MsgBox::Icon::Information:
        return QMessageBox::Information;
    case MsgBox::Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons QtButtons(MsgBox::Buttons buttons) {
    switch (buttons) {
    case MsgBox::Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case MsgBox::Buttons::YesNo:
    case MsgBox::Buttons::NoByDefault:
        return QMessageBox::Yes | QMessageBox::No;
    case MsgBox::Buttons::Ok:
    case MsgBox::Buttons::OkRestart: // The second one is no button of the toolkit.
        break;
    }
    return QMessageBox::Ok;
}

// The box's text format does not reach its second text, and paths in it are to be copied.
void ShowDetails(QMessageBox& box, const std::string& details) {
    box.setInformativeText(ToQString(details));
    if (auto* label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"))) {
        label->setTextFormat(Qt::PlainText);
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    }
}

// A closed box and Return mean the other button.
const QAbstractButton* AddRestart(QMessageBox& box) {
    QPushButton* const restart =
        box.addButton(ToQString(LoadResString(Texts::Restart)), QMessageBox::ActionRole);
    restart->setObjectName(QStringLiteral("cmdRestart"));
    box.setDefaultButton(QMessageBox::Ok);
    box.setEscapeButton(QMessageBox::Ok);
    return restart;
}

} // namespace

MsgBox::Answer QtMsgBox::Show(const std::string& text, const std::string& title, Icon icon, Buttons buttons) {
    return ShowWithDetails(text, {}, title, icon, buttons);
}

MsgBox::Answer QtMsgBox::ShowWithDetails(const std::string& text, const std::string& details,
                                         const std::string& title, Icon icon, Buttons buttons) {
    QMessageBox box(QtIcon(icon), ToQString(title), ToQString(text), QtButtons(buttons),
                    QApplication::activeWindow());
    box.setObjectName(QStringLiteral("MsgBox"));
    if (buttons == Buttons::YesNo) {
        box.setDefaultButton(QMessageBox::Yes); // As everywhere the first one, in whatever order they stand.
    } else if (buttons == Buttons::NoByDefault) {
        box.setDefaultButton(QMessageBox::No);
    }
    const QAbstractButton* const restart = buttons == Buttons::OkRestart ? AddRestart(box) : nullptr;
    // File names and error texts are shown as they are, never read as markup.
    box.setTextFormat(Qt::PlainText);
    if (!details.empty()) {
        ShowDetails(box, details);
    }
    const int answer = box.exec();
    if (restart != nullptr && box.clickedButton() == restart) {
        return Answer::Restart;
    }
    switch (answer) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    case QMessageBox::Cancel:
        return Answer::Cancel;
    default:
        // Closing a box of Yes and No means No, one of OK and Cancel means Cancel: both come in above.
        return Answer::Ok;
    }
}

} // namespace quavernet
