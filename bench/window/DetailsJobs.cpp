#include "window/DetailsJobs.h"

#include "Lines.h"

#include "app/MainModule.h"
#include "library/SqlQuote.h"

#include <QDialog>
#include <QTest>
#include <QTimer>

#include <chrono>
#include <stdexcept>

namespace quavernet::bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr Wanted Shown{.limit = 0.05};

/// Notes when a dialog has been painted for the first time, and closes it then.
class DialogWatch : public QObject {
public:
    DialogWatch() { qApp->installEventFilter(this); }

    double SecondsSince(Clock::time_point start) const {
        if (m_painted == Clock::time_point()) {
            throw std::runtime_error("no dialog has been painted");
        }
        return std::chrono::duration<double>(m_painted - start).count();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* const dialog = qobject_cast<QDialog*>(watched);
        if (event->type() == QEvent::Paint && dialog != nullptr && m_painted == Clock::time_point()) {
            // All of the window's parts have been painted when the next event comes.
            QTimer::singleShot(0, dialog, [this, dialog] {
                m_painted = Clock::now();
                dialog->reject();
            });
        }
        return false;
    }

private:
    Clock::time_point m_painted;
};

} // namespace

void DetailsJobs(RealWindow& window, const std::string& song, int rounds) {
    mainModule.Connection->Execute("Update Files set Path = '" + SqlQuote(song) + "' where Path = '" +
                                   SqlQuote(mainModule.FilePaths.Item(1)) + "'");
    mainModule.Connection->Commit();
    mainModule.FilePaths.Replace(1, song);
    GridView& grid = window.Grid();
    const QRect firstRow = grid.visualRect(grid.model()->index(0, 0));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, firstRow.center());
    double fastest = 0;
    for (int round = 0; round < rounds; ++round) {
        window.Form().activateWindow(); // No window manager gives the keys back to it.
        if (!QTest::qWaitForWindowActive(&window.Form())) {
            throw std::runtime_error("the window gets no keys");
        }
        const DialogWatch watch;
        const auto start = Clock::now();
        QTest::keyClick(&grid, Qt::Key_I, Qt::ControlModifier); // Returns when the dialog has closed.
        const double seconds = watch.SecondsSince(start);
        fastest = round == 0 ? seconds : std::min(fastest, seconds);
    }
    Print({"details of a file, from the key press to the painted dialog", "s", fastest, 0, 0, Shown});
}

} // namespace quavernet::bench
