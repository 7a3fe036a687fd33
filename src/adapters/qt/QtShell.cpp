#include "adapters/qt/QtShell.h"

#include "adapters/qt/QtText.h"
#include "adapters/qt/StartDetached.h"
#include "app/ShowBox.h"
#include "app/TextNumbers.h"
#include "platform/Ascii.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QVersionNumber>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <unistd.h>

namespace quavernet {

namespace {

const QString TemplateName = QStringLiteral("Quavernet.db");

// The path as it is; a name that is not UTF-8 can't be in a text and goes as an address of its bytes.
QString ArgumentOf(const std::string& path) {
    const QByteArray bytes = QByteArray::fromStdString(path);
    const QString text = QFile::decodeName(bytes);
    return QFile::encodeName(text) == bytes ? text
                                            : QString::fromLatin1("file://" + bytes.toPercentEncoding("/"));
}

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
    std::error_code ignored;
    const std::filesystem::path file = std::filesystem::absolute(path, ignored);
    if (!std::filesystem::exists(file.parent_path(), ignored)) {
        return FolderMissing;
    }
    if (!std::filesystem::exists(file, ignored)) {
        return FileMissing;
    }
    if (::faccessat(AT_FDCWD, file.c_str(), R_OK, AT_EACCESS) != 0) {
        return AccessDenied;
    }
    const bool started = QProcess::startDetached(QStringLiteral("xdg-open"), {ArgumentOf(file)}, QString());
    return started ? Started : NoProgram;
}

void QtShell::StartProgram(const ProgramCommand& command) {
    const int error = StartDetached(command.Program, command.Arguments);
    if (error == 0) {
        return;
    }
    const int number = error == ENOENT   ? ErrorNumber::FileNotFound
                       : error == EACCES ? ErrorNumber::PermissionDenied
                       : error == E2BIG  ? ErrorNumber::OutOfMemory
                                         : ErrorNumber::InvalidProcedureCall;
    throw RuntimeError(number, std::generic_category().message(error) + ": " + command.Program);
}

int QtShell::OpenAddress(const std::string& url) {
    const std::string scheme = LowerAscii(url.substr(0, url.find(':')));
    if (scheme == url || (scheme != "http" && scheme != "https")) {
        return NoProgram;
    }
    const bool started = QProcess::startDetached(QStringLiteral("xdg-open"), {ToQString(url)}, QString());
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
    BeforeEnd();
    End(exitCode);
}

// Only when everything is on the disk: the new process reads settings and library at once.
void QtShell::EndProcessAndStartAgain(int exitCode) {
    BeforeEnd();
    if (!StartAgain()) {
        ShowBox(Texts::NotStartedAgain, Texts::ProgramEnds, MsgBox::Icon::Critical);
    }
    End(exitCode);
}

bool QtShell::StartAgain() const {
    const QString program = m_program.isEmpty() ? QCoreApplication::applicationFilePath() : m_program;
    return QProcess::startDetached(program, QCoreApplication::arguments().mid(1), QString());
}

void QtShell::BeforeEnd() {
    if (m_beforeEnd) {
        m_beforeEnd();
    }
}

void QtShell::End(int exitCode) {
    std::fflush(nullptr);
    // At once, without unloading windows: destructors of what is still open would run handlers.
    std::_Exit(exitCode);
}

} // namespace quavernet
