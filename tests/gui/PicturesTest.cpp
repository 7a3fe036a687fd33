#include "gui/GuiTest.h"

#include "widgets/Colours.h"
#include "widgets/PictureButton.h"
#include "widgets/Pictures.h"

#include <QDir>
#include <QFile>
#include <QMouseEvent>
#include <QPainter>
#include <QRegularExpression>

namespace quavernet::test {

namespace {

constexpr auto Keys = std::to_array<const char*>(
    {"ArrowDown", "ArrowUp",      "Play",           "PlayGreen",      "PlayGreenDown",
     "PlayR",     "PlayRGreen",   "PlayRGreenDown", "cancel",         "close",
     "date",      "drag",         "file",           "konvert",        "last",
     "lastblue",  "lastdown",     "maindialog",     "maindialogblue", "maindialogdown",
     "minimize",  "minimizeblue", "minimizedown",   "next",           "nextblue",
     "nextdown",  "open",         "parent",         "pause",          "pauseblue",
     "pausedown", "play",         "playblue",       "playdown",       "plist",
     "print",     "scan",         "stop",           "stopblue",       "stopdown",
     "top"});

/// The best contrast that any pixel of the picture has with the ground.
double BestContrast(const char* key, const QColor& ground) {
    QImage image(48, 48, QImage::Format_ARGB32);
    image.fill(ground);
    QPainter painter(&image);
    Picture(key).paint(&painter, image.rect());
    painter.end();
    double best = 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            best = std::max(best, Contrast(image.pixelColor(x, y), ground));
        }
    }
    return best;
}

class PicturesTest : public GuiTest {};

} // namespace

TEST_F(PicturesTest, EveryPictureIsDrawnAtTheScaleOfTheScreen) {
    for (const char* key : Keys) {
        const QImage plain = Picture(key).pixmap(QSize(16, 16), 1.0).toImage();
        ASSERT_EQ(plain.size(), QSize(16, 16)) << key;
        for (const double scale : {1.5, 2.0}) {
            const QImage sharp = Picture(key).pixmap(QSize(16, 16), scale).toImage();
            const QSize size(static_cast<int>(16 * scale), static_cast<int>(16 * scale));
            ASSERT_EQ(sharp.size(), size) << key;
            QImage blown = plain.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
            blown.setDevicePixelRatio(scale);
            EXPECT_NE(sharp.convertToFormat(QImage::Format_ARGB32),
                      blown.convertToFormat(QImage::Format_ARGB32))
                << key << " is blown up, not drawn";
        }
    }
}

TEST_F(PicturesTest, EveryPictureIsSeenOnALightAndOnADarkWindow) {
    for (const char* key : Keys) {
        EXPECT_GE(BestContrast(key, QColor(0xEF, 0xEF, 0xEF)), 3.0) << key;
        EXPECT_GE(BestContrast(key, QColor(0x2D, 0x2D, 0x30)), 3.0) << key;
    }
}

// An outline may be fainter where what it is filled with is seen, and a stroke on a filled part is seen on
// that. The program's own sign brings its ground along.
TEST_F(PicturesTest, EveryStrokeOfEveryPictureIsSeenOnALightAndOnADarkWindow) {
    static const QRegularExpression element(QStringLiteral("<(?!svg)[a-z]+ [^>]*>"));
    static const QRegularExpression color(QStringLiteral("#[0-9a-f]{6}"));
    static const QRegularExpression fill(QStringLiteral("fill=\"(#[0-9a-f]{6})\""));
    int strokes = 0;
    for (const QString& file : QDir(QStringLiteral(":/icons")).entryList({QStringLiteral("*.svg")})) {
        QFile svg(QStringLiteral(":/icons/") + file);
        ASSERT_TRUE(svg.open(QIODevice::ReadOnly));
        for (const QColor& ground : {QColor(0xEF, 0xEF, 0xEF), QColor(0x35, 0x35, 0x35)}) {
            svg.seek(0);
            auto elements = element.globalMatch(QString::fromUtf8(svg.readAll()));
            QColor below = ground;
            while (elements.hasNext() && file != QLatin1String("quavernet.svg")) {
                const QString drawn = elements.next().captured();
                double best = 0;
                auto colors = color.globalMatch(drawn);
                while (colors.hasNext()) {
                    const QColor seen(colors.next().captured());
                    best = std::max({best, Contrast(seen, ground), Contrast(seen, below)});
                }
                EXPECT_GE(best, MarkContrast) << FromQString(file) << " " << FromQString(drawn);
                const auto filled = fill.match(drawn);
                below = filled.hasMatch() ? QColor(filled.captured(1)) : below;
                ++strokes;
            }
        }
    }
    EXPECT_GT(strokes, 100);
}

TEST_F(PicturesTest, APictureButtonHasThreeLooks) {
    QWidget window;
    window.resize(100, 100);
    PictureButton button(QStringLiteral("cmdPlay"), {"Play", "PlayGreen", "PlayGreenDown"}, &window);
    button.setGeometry(10, 10, 20, 20);
    int clicks = 0;
    int entered = 0;
    QObject::connect(&button, &QAbstractButton::clicked, [&clicks] { ++clicks; });
    QObject::connect(&button, &PictureButton::Entered, [&entered] { ++entered; });
    window.show();
    EXPECT_EQ(button.PictureKey(), "Play");
    QMouseEvent over(QEvent::MouseMove, QPointF(5, 5), QPointF(button.mapToGlobal(QPoint(5, 5))),
                     Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&button, &over);
    EXPECT_EQ(button.PictureKey(), "PlayGreen");
    EXPECT_EQ(entered, 1);
    QTest::mousePress(&button, Qt::LeftButton);
    EXPECT_EQ(button.PictureKey(), "PlayGreenDown");
    QTest::mouseRelease(&button, Qt::LeftButton);
    EXPECT_EQ(button.PictureKey(), "PlayGreen");
    EXPECT_EQ(clicks, 1);
    button.SetAtRest();
    EXPECT_EQ(button.PictureKey(), "Play");
    QTest::keyPress(&button, Qt::Key_Space);
    EXPECT_EQ(button.PictureKey(), "PlayGreenDown");
    QTest::keyRelease(&button, Qt::Key_Space);
    EXPECT_EQ(button.PictureKey(), "Play");
    EXPECT_EQ(clicks, 2);
    button.setEnabled(false);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicks, 2);
}

TEST_F(PicturesTest, ThePlayButtonsStandBesideTheSearchBox) {
    Start();
    EXPECT_TRUE(Control<PictureButton>("cmdPlay").isVisible());
    EXPECT_TRUE(Control<PictureButton>("cmdRandomize").isVisible());
}

TEST_F(PicturesTest, AMouseOverOnePlayButtonOrAPaneSetsTheOtherPictureToRest) {
    Start();
    auto& play = Control<PictureButton>("cmdPlay");
    auto& randomize = Control<PictureButton>("cmdRandomize");
    play.setEnabled(true);
    const auto moveOver = [](QWidget& widget) {
        QMouseEvent move(QEvent::MouseMove, QPointF(2, 2), QPointF(widget.mapToGlobal(QPoint(2, 2))),
                         Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&widget, &move);
    };
    moveOver(play);
    EXPECT_EQ(play.PictureKey(), "PlayGreen");
    moveOver(randomize);
    EXPECT_EQ(play.PictureKey(), "Play");
    EXPECT_EQ(randomize.PictureKey(), "PlayRGreen");
    for (const char* name : {"Frame1", "Frame2", "Toolbar1"}) {
        moveOver(randomize);
        moveOver(Control<QWidget>(name));
        EXPECT_EQ(randomize.PictureKey(), "PlayR") << name;
    }
}

} // namespace quavernet::test
