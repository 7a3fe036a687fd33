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

} // namespace

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
