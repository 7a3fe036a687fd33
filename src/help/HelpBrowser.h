// The page itself: a text browser that knows the help and nothing else. No network, no files, no programs.
#pragma once

#include <QImage>
#include <QTextBrowser>

namespace quavernet {

class HelpBrowser : public QTextBrowser {
    Q_OBJECT
public:
    explicit HelpBrowser(QWidget* parent);

    QVariant loadResource(int type, const QUrl& name) override;

    /// Back to the font of the window.
    void ResetZoom() { setFont(QFont()); }

protected:
    void resizeEvent(QResizeEvent* event) override;
    void doSetSource(const QUrl& place, QTextDocument::ResourceType type) override;
    void changeEvent(QEvent* event) override;

private:
    QImage Fitted(const QByteArray& bytes) const;
    int PictureRoom() const;
    void FitPictures();
};

} // namespace quavernet
