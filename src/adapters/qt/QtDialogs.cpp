#include "adapters/qt/QtDialogs.h"

#include "adapters/qt/PageTargets.h"
#include "adapters/qt/PaintedPages.h"
#include "adapters/qt/QtText.h"
#include "app/Registry.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QStandardPaths>

#include <memory>

namespace quavernet {

namespace {

constexpr const char* LastFolder = "LastFolder"; // Setting: where the last folder dialog ended.

// In a folder that is not there nothing could be chosen.
QString StartFolder() {
    const QString last = ToQString(Setting(LastFolder, ""));
    if (!last.isEmpty() && QFileInfo(last).isDir()) {
        return last;
    }
    const QString music = QStandardPaths::writableLocation(QStandardPaths::MusicLocation);
    return QFileInfo(music).isDir() ? music : QDir::homePath();
}

// "Playlists (*.m3u)|*.m3u" as the toolkit wants it: what is shown, and in brackets of its own a pattern that
// takes each letter in either case. Where a folder's list is the system's, case would count otherwise.
QStringList NameFilters(const QString& filter) {
    const QStringList parts = filter.split(u'|');
    QStringList filters;
    for (qsizetype part = 0; part + 1 < parts.size(); part += 2) {
        QString pattern;
        // All files, also those without a point in their names.
        const QString wanted =
            parts[part + 1] == QLatin1String("*.*") ? QStringLiteral("*") : parts[part + 1];
        for (const QChar c : wanted) {
            pattern += c.isLetter() ? QStringLiteral("[%1%2]").arg(c.toLower()).arg(c.toUpper()) : QString(c);
        }
        filters.append(QStringLiteral("%1 (%2)").arg(parts[part], pattern));
    }
    return filters;
}

std::optional<std::string> Choose(QFileDialog& dialog, const std::string& filter, const std::string& folder) {
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setNameFilters(NameFilters(ToQString(filter)));
    const QString start = QFile::decodeName(QByteArray::fromStdString(folder));
    dialog.setDirectory(QFileInfo(start).isDir() ? start : QDir::homePath());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString();
}

// The toolkit offers a file of some other name in the home folder, or a folder alone.
void OfferFile(const QPrintDialog& dialog, const QString& name) {
    auto* const field = dialog.findChild<QLineEdit*>(QStringLiteral("filename"));
    if (field == nullptr) {
        return;
    }
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString folder = QFileInfo(documents).isDir() ? documents : QDir::homePath();
    const QString file = name + QStringLiteral(".pdf");
    field->setText(QDir(folder).filePath(file));
}

std::unique_ptr<PageTarget> TargetOf(std::unique_ptr<QPrinter> printer) {
    if (printer->outputFormat() == QPrinter::PdfFormat) {
        return std::make_unique<PdfFile>(printer->outputFileName(), printer->pageLayout());
    }
    return std::make_unique<PrinterQueue>(std::move(printer));
}

} // namespace

std::optional<std::string> QtDialogs::ShowOpen(const std::string& filter, const std::string& folder) {
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("ShowOpen"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    // The toolkit can't say a name that is not UTF-8: what it gives for one is no file, and none was chosen.
    const std::optional<std::string> path = Choose(dialog, filter, folder);
    return path && QFileInfo::exists(QFile::decodeName(QByteArray::fromStdString(*path))) ? path
                                                                                          : std::nullopt;
}

std::optional<std::string> QtDialogs::ShowSave(const std::string& filter, const std::string& folder) {
    QFileDialog dialog(QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("ShowSave"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    return Choose(dialog, filter, folder);
}

std::optional<std::string> QtDialogs::BrowseForFolder(const std::string& title) {
    QFileDialog dialog(QApplication::activeWindow(), ToQString(title), StartFolder());
    dialog.setObjectName(QStringLiteral("BrowseForFolder"));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    const std::string folder = QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString();
    SaveSetting(LastFolder, folder);
    return folder;
}

std::optional<ChosenPrinter> QtDialogs::ShowPrinter(const std::string& name) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    QPrintDialog dialog(printer.get(), QApplication::activeWindow());
    dialog.setObjectName(QStringLiteral("ShowPrinter"));
    // The whole list is printed: there is no range to choose.
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize |
                      QAbstractPrintDialog::PrintCollateCopies);
    OfferFile(dialog, ToQString(name));
    if (dialog.exec() != QDialog::Accepted) {
        return std::nullopt;
    }
    ChosenPrinter chosen;
    chosen.Copies = printer->copyCount();
    chosen.Orientation = printer->pageLayout().orientation() == QPageLayout::Landscape
                             ? Printer::Orientation::Landscape
                             : Printer::Orientation::Portrait;
    chosen.Target = std::make_unique<PaintedPages>(TargetOf(std::move(printer)));
    return chosen;
}

} // namespace quavernet
