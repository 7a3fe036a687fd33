// The page itself: a text browser that knows the help and nothing else. No network, no files, no programs.
#pragma once

#include <QTextBrowser>

namespace quavernet {

class HelpBrowser : public QTextBrowser {
    Q_OBJECT
public:
    explicit HelpBrowser(QWidget* parent);

    QVariant loadResource(int type, const QUrl& name) override;

protected:
    void doSetSource(const QUrl& place, QTextDocument::ResourceType type) override;
    void changeEvent(QEvent* event) override;
};

} // namespace quavernet
