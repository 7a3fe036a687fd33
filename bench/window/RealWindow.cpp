#include "window/RealWindow.h"

#include "app/MainModule.h"
#include "mainwindow/Main.h"

#include <QDeadlineTimer>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QTimer>

#include <stdexcept>

namespace quavernet::bench {

namespace {

/// Sees that a widget paints.
class PaintWatch : public QObject {
public:
    explicit PaintWatch(QWidget& widget) { widget.installEventFilter(this); }

    bool Painted() const { return m_painted; }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        m_painted = m_painted || event->type() == QEvent::Paint;
        return false;
    }

private:
    bool m_painted = false;
};

} // namespace

std::string LibraryPath() {
    return mainModule.ConnectionString.substr(mainModule.ConnectionString.find("Data Source=") + 12);
}

void WriteIntoLibrary() {
    mainModule.Connection->Execute("Update Files set Hits = Hits + 1 where File_id = "
                                   "(Select Min(File_id) from Files)");
    mainModule.Connection->Commit();
}

RealWindow::RealWindow(int& count, char** arguments) : m_application(count, arguments) {}

RealWindow::~RealWindow() {
    mainModule.Connection.reset();
}

void RealWindow::Start() {
    Main(m_windows);
    Control<QWidget>("frmSplash").close();
    PaintAgain();
}

void RealWindow::UntilPainted(const std::function<void()>& action, QAbstractItemView& view) {
    action();
    // Whatever is painted from here on are the new rows: until here no events have run since they are there.
    const PaintWatch watch(*view.viewport());
    const QDeadlineTimer patience(std::chrono::minutes(1));
    QTimer heartbeat; // Events may not come at all.
    heartbeat.start(std::chrono::seconds(1));
    while (!watch.Painted()) {
        if (patience.hasExpired()) {
            throw std::runtime_error("nothing has been painted");
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    WaitForScreen();
}

void RealWindow::Rest() {
    constexpr std::chrono::milliseconds PaintedLate(120);
    const QDeadlineTimer end(PaintedLate);
    QTimer heartbeat; // Events may not come at all.
    heartbeat.start(PaintedLate / 10);
    while (!end.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    WaitForScreen();
}

void RealWindow::PaintAgain() {
    Grid().viewport()->repaint();
    WaitForScreen();
}

// To ask the screen for a pixel takes until it has done all that it was told before.
void RealWindow::WaitForScreen() {
    Form().screen()->grabWindow(Form().winId(), 0, 0, 1, 1);
}

void RealWindow::RequireShown() {
    QWidget& rows = *Grid().viewport();
    const QPoint place = rows.mapTo(&Form(), QPoint(0, 0));
    const auto plain = [](const QPixmap& picture) {
        return picture.toImage().convertToFormat(QImage::Format_RGB32);
    };
    const QImage shown =
        plain(Form().screen()->grabWindow(Form().winId(), place.x(), place.y(), rows.width(), rows.height()));
    if (shown != plain(rows.grab())) {
        throw std::runtime_error("the screen does not show the list");
    }
}

} // namespace quavernet::bench
