#include "platform/qt/QtDialogs.h"

#include "platform/qt/QtText.h"

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QStandardPaths>

namespace quavernet {

std::optional<std::string> QtDialogs::BrowseForFolder(const std::string& title) {
    QFileDialog dialog(QApplication::activeWindow(), ToQString(title),
                       QStandardPaths::writableLocation(QStandardPaths::MusicLocation));
    dialog.setObjectName(QStringLiteral("BrowseForFolder"));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    return QFile::encodeName(dialog.selectedFiles().constFirst()).toStdString();
}

} // namespace quavernet
