// Base of the tests of printing: the main window with a list of numbered rows, real PDF files, and what other
// programs read in them.
#pragma once

#include "gui/GuiTest.h"

#include "adapters/qt/PageTargets.h"
#include "support/PrinterDouble.h"
#include "support/TestFiles.h"

#include <QImage>
#include <QPageLayout>
#include <QProcess>

#include <memory>
#include <string>
#include <vector>

namespace quavernet::test {

class PrintTest : public GuiTest {
protected:
    ~PrintTest() override { services.events = &realEvents; }

    void StartWithRows(std::size_t rows) {
        Start();
        Grid().SetRows(NumberedRows(rows));
        for (const auto& [column, width] :
             {std::pair(0, 110), {1, 110}, {2, 100}, {3, 100}, {4, 140}, {5, 80}}) {
            Grid().setColumnWidth(column, width);
        }
    }
    /// As the print dialog gives it for a PDF file.
    static ChosenPrinter Pdf(const std::string& path,
                             Printer::Orientation orientation = Printer::Orientation::Portrait,
                             QPageSize::PageSizeId size = QPageSize::A4) {
        const QPageLayout layout(QPageSize(size), QPageLayout::Portrait, QMarginsF(10, 10, 10, 10));
        return {std::make_unique<PaintedPages>(std::make_unique<PdfFile>(ToQString(path), layout)), 1,
                orientation};
    }
    void PrintTo(const std::string& path, Printer::Orientation orientation = Printer::Orientation::Portrait,
                 QPageSize::PageSizeId size = QPageSize::A4) {
        dialogs.printer = Pdf(path, orientation, size);
        Action("mnuPrint").trigger();
    }

    static QByteArray OutputOf(const QString& program, const QStringList& arguments) {
        QProcess process;
        process.start(program, arguments);
        EXPECT_TRUE(process.waitForFinished(60000)) << FromQString(program);
        EXPECT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
        return process.readAllStandardOutput();
    }
    /// The lines of each page as another program reads them, blank ones left out and blanks made single.
    static std::vector<Texts> Pages(const std::string& path) {
        const QString text = QString::fromUtf8(OutputOf(
            QStringLiteral("pdftotext"), {QStringLiteral("-layout"), ToQString(path), QStringLiteral("-")}));
        std::vector<Texts> pages;
        for (const QString& page : text.split(u'\f', Qt::SkipEmptyParts)) {
            Texts lines;
            for (const QString& line : page.split(u'\n', Qt::SkipEmptyParts)) {
                lines.push_back(FromQString(line.simplified()));
            }
            pages.push_back(lines);
        }
        return pages;
    }
    static constexpr int PicturePixelsPerInch = 120;
    /// The picture of a page, counted from 1, as another program paints it.
    static QImage Picture(const std::string& path, int page) {
        const QString number = QString::number(page);
        return QImage::fromData(
            OutputOf(QStringLiteral("pdftoppm"),
                     {QStringLiteral("-png"), QStringLiteral("-r"), QString::number(PicturePixelsPerInch),
                      QStringLiteral("-f"), number, QStringLiteral("-l"), number, ToQString(path)}));
    }
    static double Pixels(double millimetres) { return millimetres * PicturePixelsPerInch / 25.4; }
    /// The smallest rectangle that holds everything on the picture that is not white.
    static QRect Inked(const QImage& picture) {
        QRect inked;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (qGray(picture.pixel(x, y)) < 250) {
                    inked |= QRect(x, y, 1, 1);
                }
            }
        }
        return inked;
    }
};

} // namespace quavernet::test
