// The other side of a drag: a window that gives the files named on its command line (as paths, or as URIs
// that begin with "file:") to whoever they are dragged to, and prints the files that are dropped on it, one
// URI a line.
#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QUrl>
#include <QWidget>

#include <cstdio>

namespace {

class Partner : public QWidget {
public:
    explicit Partner(QList<QUrl> files) : m_files(std::move(files)) {
        setWindowTitle(QStringLiteral("Drag partner"));
        setAcceptDrops(true);
    }

protected:
    void mouseMoveEvent(QMouseEvent* event) override {
        if (event->buttons() != Qt::LeftButton || m_dragging) {
            return;
        }
        m_dragging = true;
        auto* offer = new QMimeData;
        offer->setUrls(m_files);
        auto* drag = new QDrag(this);
        drag->setMimeData(offer);
        drag->exec(Qt::CopyAction);
        m_dragging = false;
    }
    void dragEnterEvent(QDragEnterEvent* event) override { event->acceptProposedAction(); }
    void dropEvent(QDropEvent* event) override {
        event->acceptProposedAction();
        std::printf("%s\n", event->mimeData()->data(QStringLiteral("text/uri-list")).constData());
        std::fflush(stdout);
    }

private:
    QList<QUrl> m_files;
    bool m_dragging = false;
};

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QList<QUrl> files;
    for (const QString& path : QApplication::arguments().mid(1)) {
        files.append(path.startsWith(QLatin1String("file:")) ? QUrl::fromEncoded(path.toLatin1())
                                                             : QUrl::fromLocalFile(path));
    }
    Partner window(files);
    window.setGeometry(1040, 120, 220, 300);
    window.show();
    return QApplication::exec();
}
