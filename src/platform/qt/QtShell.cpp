#include "platform/qt/QtShell.h"

#include "platform/qt/QtText.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QVersionNumber>

#include <cstdio>
#include <cstdlib>

namespace quavernet {

namespace {

// What ShellExecute answers, by the system's own numbers.
constexpr int FileMissing = 2;
constexpr int FolderMissing = 3;
constexpr int AccessDenied = 5;
constexpr int NoProgram = 31;
constexpr int Started = 33;

const QString TemplateName = QStringLiteral("Quavernet.db");

} // namespace

std::optional<std::string> QtShell::SpecialFolder(int id) {
    if (id != DocumentsFolder) {
        return std::nullopt;
    }
    const QString path = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    if (path.isEmpty()) {
        return std::nullopt;
    }
    return QFile::encodeName(path).toStdString();
}

std::string QtShell::ProgramFolder() {
    const QString beside = QCoreApplication::applicationDirPath();
    const QString installed = QFileInfo(beside + QStringLiteral("/../share/quavernet")).absoluteFilePath();
    const bool useInstalled =
        !QFile::exists(beside + u'/' + TemplateName) && QFile::exists(installed + u'/' + TemplateName);
    return QFile::encodeName(useInstalled ? QFileInfo(installed).canonicalFilePath() : beside).toStdString();
}

int QtShell::ShellExecute(const std::string& path) {
    const QFileInfo file(QFile::decodeName(QByteArray::fromStdString(path)));
    if (!file.dir().exists()) {
        return FolderMissing;
    }
    if (!file.exists()) {
        return FileMissing;
    }
    if (!file.isReadable()) {
        return AccessDenied;
    }
    const bool started =
        QProcess::startDetached(QStringLiteral("xdg-open"), {file.absoluteFilePath()}, QString());
    return started ? Started : NoProgram;
}

bool QtShell::DllGetVersion(std::int32_t& major, std::int32_t& minor, std::int32_t& build) {
    const QVersionNumber version = QLibraryInfo::version();
    major = version.majorVersion();
    minor = version.minorVersion();
    build = version.microVersion();
    return true;
}

void QtShell::EndProcess(int exitCode) {
    if (m_beforeEnd) {
        m_beforeEnd();
    }
    std::fflush(nullptr);
    // At once, without unloading windows: destructors of what is still open would run handlers.
    std::_Exit(exitCode);
}

} // namespace quavernet
