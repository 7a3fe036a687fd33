#include "mainwindow/frmSplash.h"

#include "app/Version.h"
#include "ui_frmSplash.h"
#include "widgets/Colours.h"
#include "widgets/Pictures.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace quavernet {

namespace {

constexpr int ShownForMs = 4000;

bool IsModifier(int key) {
    return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_AltGr ||
           key == Qt::Key_Meta;
}

} // namespace

frmSplash::frmSplash(QWidget* owner)
    : QDialog(owner, Qt::SplashScreen | Qt::FramelessWindowHint), m_ui(std::make_unique<Ui::frmSplash>()) {
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    setStyleSheet(QStringLiteral("QDialog#frmSplash { background: %1; border: 1px solid %2; } "
                                 "QLabel { color: %3; }")
                      .arg(ColourOf(OwnColour::SplashGround, palette()).name(),
                           ColourOf(OwnColour::SplashEdge, palette()).name(),
                           ColourOf(OwnColour::SplashText, palette()).name()));
    m_ui->Image1->setPixmap(Picture("quavernet").pixmap(QSize(96, 96), devicePixelRatio()));
    m_ui->lblVersion->setText(ToQString(SplashVersionText()));
    m_timer = new QTimer(this);
    m_timer->setObjectName(QStringLiteral("Timer1"));
    m_timer->setSingleShot(true);
    m_timer->setInterval(ShownForMs);
    connect(m_timer, &QTimer::timeout, this, &QWidget::close);
    m_timer->start();
    if (owner != nullptr) {
        qApp->installEventFilter(this);
        adjustSize();
        move(owner->frameGeometry().center() - rect().center());
    }
}

frmSplash::~frmSplash() = default;

void frmSplash::mousePressEvent(QMouseEvent*) {
    close();
}

void frmSplash::keyPressEvent(QKeyEvent*) {
    close();
}

// A key that is meant for the owner ends the splash window and goes no further: nobody wants to press a
// button or choose a command beneath it. What is typed into a field is meant for that field.
bool frmSplash::eventFilter(QObject* watched, QEvent* event) {
    const bool override = event->type() == QEvent::ShortcutOverride;
    if ((!override && event->type() != QEvent::KeyPress) || !isVisible()) {
        return false;
    }
    const auto* control = qobject_cast<QWidget*>(watched);
    if (control == nullptr || control->window() != parentWidget() ||
        IsModifier(static_cast<QKeyEvent*>(event)->key())) {
        return false;
    }
    const bool command = static_cast<QKeyEvent*>(event)->modifiers().testAnyFlags(
        Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
    const bool typed = qobject_cast<const QLineEdit*>(control) != nullptr && !command;
    if (override && !typed) {
        event->accept(); // No command by its shortcut: the key comes as a key.
        return true;
    }
    if (!override) {
        close();
    }
    return !typed;
}

} // namespace quavernet
