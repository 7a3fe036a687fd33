#include "adapters/qt/QtDialogs.h"

#include "adapters/qt/QtText.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QStandardPaths>

namespace quavernet {

namespace {

// In a folder that is not there nothing could be chosen.
QString StartFolder() {
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
        for (const QChar c : parts[part + 1]) {
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
    return QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString();
}

} // namespace quavernet
