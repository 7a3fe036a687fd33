#include "extras/CoversHost.h"

#include "app/MainModule.h"
#include "extras/frmCovers.h"
#include "widgets/HourglassPointer.h"

#include <QApplication>
#include <QEvent>

namespace quavernet {

CoversHost::CoversHost(QWidget& owner) : m_owner(owner) {
    m_owner.installEventFilter(this);
}

CoversHost::~CoversHost() = default;

void CoversHost::Show() {
    const HourglassPointer hourglass;
    if (!m_form) {
        auto form = std::make_unique<frmCovers>(&m_owner);
        form->Form_Load();
        m_form = std::move(form);
        QObject::connect(m_form.get(), &frmCovers::Closed, this, &CoversHost::Forget);
    }
    if (m_form->isMinimized()) {
        m_form->showNormal();
    }
    m_form->show();
    if (QWidget* modal = QApplication::activeModalWidget()) {
        m_form->ActBeside(modal);
    }
    m_form->raise();
    m_form->activateWindow();
}

void CoversHost::ShowAlbum(const std::string& key) {
    const HourglassPointer hourglass;
    Show();
    services.events->DoEvents();
    if (m_form) {
        m_form->SelectAlbum(key);
    }
}

void CoversHost::LoadStrings() {
    if (m_form) {
        m_form->LoadStrings();
    }
}

void CoversHost::Forget() {
    m_closed.Add(std::move(m_form));
}

bool CoversHost::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &m_owner && event->type() == QEvent::Hide && !event->spontaneous() && m_form) {
        m_form->close();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace quavernet
