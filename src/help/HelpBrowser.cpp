#include "help/HelpBrowser.h"

#include "help/HelpSet.h"

#include <QEvent>

namespace quavernet {

HelpBrowser::HelpBrowser(QWidget* parent) : QTextBrowser(parent) {
    setOpenExternalLinks(false);
    // Links are reached by Tab and followed by Enter.
    setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard);
}

QVariant HelpBrowser::loadResource(int, const QUrl& name) {
    const QByteArray bytes = HelpSet::Read(source().resolved(name));
    return bytes.isEmpty() ? QVariant() : QVariant(bytes);
}

void HelpBrowser::doSetSource(const QUrl& place, QTextDocument::ResourceType type) {
    const QUrl target = source().resolved(place);
    if (!HelpSet::Read(target).isEmpty()) {
        QTextBrowser::doSetSource(target, type);
    }
}

void HelpBrowser::changeEvent(QEvent* event) {
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && source().isValid()) {
        reload(); // The style sheet takes its lines and shades from the palette.
    }
}

} // namespace quavernet
