#include "mainwindow/frmSplash.h"

#include "app/Version.h"
#include "ui_frmSplash.h"
#include "widgets/Pictures.h"

namespace quavernet {

namespace {
constexpr int ShownForMs = 4000;
}

frmSplash::frmSplash(QWidget* owner)
    : QDialog(owner, Qt::SplashScreen | Qt::FramelessWindowHint), m_ui(std::make_unique<Ui::frmSplash>()) {
    m_ui->setupUi(this);
    setAttribute(Qt::WA_DeleteOnClose);
    m_ui->Image1->setPixmap(Picture("quavernet").pixmap(QSize(96, 96), devicePixelRatio()));
    m_ui->lblVersion->setText(ToQString(SplashVersionText()));
    m_timer = new QTimer(this);
    m_timer->setObjectName(QStringLiteral("Timer1"));
    m_timer->setSingleShot(true);
    m_timer->setInterval(ShownForMs);
    connect(m_timer, &QTimer::timeout, this, &QWidget::close);
    m_timer->start();
    if (owner != nullptr) {
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

} // namespace quavernet
