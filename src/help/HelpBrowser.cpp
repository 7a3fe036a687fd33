#include "help/HelpBrowser.h"

#include "help/HelpSet.h"
#include "widgets/Colours.h"

#include <QResizeEvent>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace quavernet {

namespace {

// Rules of the style sheet whose colours are not the desktop's.
QByteArray OwnRules(const QPalette& palette) {
    return QStringLiteral("\na { color: %1; }\ntable { border-color: %2; }\n")
        .arg(ColourOf(OwnColour::Link, palette).name(), ColourOf(OwnColour::Edge, palette).name())
        .toUtf8();
}

} // namespace

HelpBrowser::HelpBrowser(QWidget* parent) : QTextBrowser(parent) {
    setOpenExternalLinks(false);
    // Or the width that pictures are fitted to would change with the height that they come to.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    // Links are reached by Tab and followed by Enter.
    setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard);
}

QVariant HelpBrowser::loadResource(int type, const QUrl& name) {
    const QUrl place = source().resolved(name);
    const QByteArray bytes = HelpSet::Read(place);
    if (bytes.isEmpty()) {
        return {};
    }
    if (type == QTextDocument::StyleSheetResource) {
        return bytes + OwnRules(palette());
    }
    if (type != QTextDocument::ImageResource) {
        return bytes;
    }
    return Fitted(bytes);
}

// Between the margins of the page, which are told in its style sheet.
int HelpBrowser::PictureRoom() const {
    constexpr int PageMargin = 12;
    return viewport()->width() - 2 * (PageMargin + static_cast<int>(document()->documentMargin()));
}

// A picture that is wider than the page becomes smaller; none becomes larger.
QImage HelpBrowser::Fitted(const QByteArray& bytes) const {
    QImage picture = QImage::fromData(bytes);
    const int room = PictureRoom();
    if (picture.width() <= room || room <= 0) {
        return picture;
    }
    const double ratio = devicePixelRatioF();
    picture = picture.scaledToWidth(std::min(picture.width(), static_cast<int>(room * ratio)),
                                    Qt::SmoothTransformation);
    picture.setDevicePixelRatio(static_cast<double>(picture.width()) / room);
    return picture;
}

// The pages name the size of each picture, so that the page gets the new one, too.
void HelpBrowser::FitPictures() {
    QTextCursor cursor(document());
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        for (auto at = block.begin(); !at.atEnd(); ++at) {
            if (!at.fragment().charFormat().isImageFormat()) {
                continue;
            }
            QTextImageFormat format = at.fragment().charFormat().toImageFormat();
            const QImage picture = Fitted(HelpSet::Read(source().resolved(QUrl(format.name()))));
            const QSizeF size = picture.size() / picture.devicePixelRatio();
            if (picture.isNull() || (format.width() == size.width() && format.height() == size.height())) {
                continue;
            }
            document()->addResource(QTextDocument::ImageResource,
                                    document()->baseUrl().resolved(QUrl(format.name())), picture);
            format.setWidth(size.width());
            format.setHeight(size.height());
            cursor.setPosition(at.fragment().position());
            cursor.setPosition(at.fragment().position() + at.fragment().length(), QTextCursor::KeepAnchor);
            cursor.setCharFormat(format);
            break; // The block's pieces are new ones now; each picture has a block of its own.
        }
    }
}

void HelpBrowser::resizeEvent(QResizeEvent* event) {
    QTextBrowser::resizeEvent(event);
    if (event->size().width() != event->oldSize().width()) {
        FitPictures();
    }
}

void HelpBrowser::doSetSource(const QUrl& place, QTextDocument::ResourceType type) {
    const QUrl target = source().resolved(place);
    if (!HelpSet::Read(target).isEmpty()) {
        QTextBrowser::doSetSource(target, type);
        FitPictures();
    }
}

void HelpBrowser::changeEvent(QEvent* event) {
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange && source().isValid()) {
        reload(); // The style sheet takes its lines and shades from the palette.
    }
}

} // namespace quavernet
