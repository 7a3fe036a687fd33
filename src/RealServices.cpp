#include "RealServices.h"

#include "adapters/dbus/BusDesktop.h"
#include "adapters/dbus/MprisRemote.h"
#include "adapters/id3v2/TagLibComponent.h"
#include "adapters/mpv/MpvPlayer.h"
#include "adapters/posix/KeepFreedMemory.h"
#include "adapters/posix/PosixFileSystem.h"
#include "adapters/posix/PosixReadAhead.h"
#include "adapters/qt/QtRegionalSettings.h"
#include "adapters/sqlite/SqliteConnection.h"
#include "app/MainModule.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <utility>

namespace quavernet {

namespace {

void PostToMainLoop(std::function<void()> run) {
    QMetaObject::invokeMethod(qApp, std::move(run), Qt::QueuedConnection);
}

} // namespace

RealServices::RealServices()
    : m_shell([this] { Save(); }), m_readers(CreateReaderPool()), m_files(m_readers),
      m_desktop(CreateBusDesktop()), m_fileSystem(CreatePosixFileSystem(m_readers)),
      m_readAhead(CreatePosixReadAhead(m_readers)) {
    KeepFreedMemory();
    services.settings = &m_settings;
    services.fileSystem = m_fileSystem.get();
    services.files = &m_files;
    services.shell = &m_shell;
    services.msgBox = &m_msgBox;
    services.dialogs = &m_dialogs;
    services.oggInfo = &m_oggInfo;
    services.oggComments = &m_oggComments;
    services.events = &m_events;
    services.clock = &m_clock;
    services.helpViewer = &m_helpViewer;
    services.desktop = m_desktop.get();
    services.readAhead = m_readAhead.get();
    services.regional = ReadRegionalSettings();
    services.createConnection = [] { return CreateSqliteConnection(services.regional); };
    services.createTagComponent = [this] { return CreateTagLibComponent(m_files); };
    services.createMediaPlayer = [this] { return CreateMpvPlayer(m_files, PostToMainLoop); };
    services.createMediaRemote = [] { return CreateMprisRemote(); };
}

void RealServices::Save() {
    if (mainModule.Connection) {
        IgnoreFailure([] { mainModule.Connection->Commit(); });
    }
    m_settings.Sync();
}

} // namespace quavernet
