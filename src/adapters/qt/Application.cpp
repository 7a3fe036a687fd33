#include "adapters/qt/Application.h"

#include "adapters/qt/QtText.h"
#include "app/LibraryFailure.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/SettingFailure.h"
#include "app/ShowBox.h"
#include "app/TextNumbers.h"
#include "platform/Desktop.h"
#include "platform/LibraryError.h"

#include <QAbstractEventDispatcher>
#include <QLabel>
#include <QLineEdit>
#include <QLoggingCategory>
#include <QValidator>

#include <cstdlib>

namespace quavernet {

namespace {

constexpr int FailureExitCode = 1;

void CommitLibrary() {
    if (mainModule.Connection) {
        mainModule.Connection->Commit();
    }
}

// What the user can do about it, where that is known.
std::string DetailsOf(const std::exception& failure) {
    if (const auto* library = dynamic_cast<const LibraryError*>(&failure)) {
        return LibraryFailureText(*library);
    }
    const auto* setting = dynamic_cast<const SettingError*>(&failure);
    return setting != nullptr ? SettingFailureText(*setting) : std::string();
}

// A label guesses whether its text is markup, and texts come from files: "<b>x</b>" is a fine title. Every
// label is told to show what it was given, once, before it is first shown. Tool tips are labels, and so are
// the texts of all boxes.
void ShowTextsAsTheyStand(QObject& receiver) {
    if (auto* label = qobject_cast<QLabel*>(&receiver);
        label != nullptr && label->textFormat() == Qt::AutoText) {
        label->setTextFormat(Qt::PlainText);
    }
}

// A NUL is the end of a text to the system, and to the engine that of a statement, which is refused. Nobody
// types one, but pasted and dropped texts may hold some.
class NulRemover : public QValidator {
public:
    using QValidator::QValidator;
    State validate(QString& text, int& cursor) const override {
        cursor -= static_cast<int>(text.left(cursor).count(QChar::Null));
        text.remove(QChar::Null);
        return Acceptable;
    }
};

// Every field, also those of the toolkit's own dialogs; number boxes take nothing but digits anyway.
void KeepNulsOut(QObject& receiver) {
    if (auto* field = qobject_cast<QLineEdit*>(&receiver);
        field != nullptr && field->validator() == nullptr) {
        field->setValidator(new NulRemover(field));
    }
}

} // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    setApplicationName(QStringLiteral("Quavernet"));
    setOrganizationName(QStringLiteral("Greyfinch Labs"));
    setDesktopFileName(QLatin1String(DesktopId));
    // What Wayland forbids is passed over: the toolkit complains about its own menus, too. So is any other
    // warning of this category, until QT_LOGGING_RULES brings it back. The words at the loss of the display
    // are of the category "default": LostDisplay hears them.
    QLoggingCategory::setFilterRules(QStringLiteral("qt.qpa.wayland.warning=false"));
    // The last of the two top-level windows ends the process by itself.
    setQuitOnLastWindowClosed(false);
    // The connection may gather the commits of a run of writes; before the program waits for its user they
    // stand in the file.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            [this] { RunGuarded("Commit", CommitLibrary); });
}

bool Application::notify(QObject* receiver, QEvent* event) {
    // The receiver may be gone when the handler throws.
    const QString receiverName = receiver->objectName();
    if (event->type() == QEvent::Polish) {
        ShowTextsAsTheyStand(*receiver);
        KeepNulsOut(*receiver);
    }
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& failure) {
        EndWithFailure(failure, FromQString(receiverName));
    }
}

// The toolkit would close the windows at once, and leave it at that if one of them refuses.
bool Application::event(QEvent* event) {
    if (event->type() == QEvent::Quit) {
        emit this->EndRequested();
        return true;
    }
    return QApplication::event(event);
}

void Application::RunGuarded(const std::string& doing, const std::function<void()>& action) {
    try {
        action();
    } catch (const std::exception& failure) {
        EndWithFailure(failure, doing);
    }
}

void Application::EndWithFailure(const std::exception& failure, const std::string& doing) {
    if (m_ending) {
        // A second failure, raised while the box of the first is up: nothing more can be said or saved.
        std::_Exit(FailureExitCode);
    }
    m_ending = true;
    try {
        CommitLibrary();
    } catch (const RuntimeError&) {
        // The first failure is the one to show; what could be written has been.
    }
    const auto* error = dynamic_cast<const RuntimeError*>(&failure);
    std::string text =
        error != nullptr ? FailureText(*error) : LoadResString(Texts::ErrorStart) + failure.what();
    const std::string activity = m_activity ? m_activity() : std::string();
    const std::string& during = activity.empty() ? doing : activity;
    if (!during.empty()) {
        text += "\n(" + during + ")";
    }
    text += "\n" + LoadResString(442);
    const MsgBox::Answer answer = services.msgBox->ShowWithDetails(
        text, DetailsOf(failure), LoadResString(443), MsgBox::Icon::Critical, MsgBox::Buttons::OkRestart);
    if (answer == MsgBox::Answer::Restart) {
        services.shell->EndProcessAndStartAgain(FailureExitCode);
    }
    services.shell->EndProcess(FailureExitCode);
    std::abort(); // Not reached: the process has ended.
}

} // namespace quavernet
