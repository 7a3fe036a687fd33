// The services of the program with the adapters that answer on a desktop. Made once by whoever runs the whole
// program: main, and the helpers of benchmarks and checks.
#pragma once

#include "adapters/posix/PosixFiles.h"
#include "adapters/posix/SystemClock.h"
#include "adapters/qt/QtDialogs.h"
#include "adapters/qt/QtEvents.h"
#include "adapters/qt/QtMsgBox.h"
#include "adapters/qt/QtSettings.h"
#include "adapters/qt/QtShell.h"
#include "adapters/vorbis/OggCommentWriter.h"
#include "adapters/vorbis/OggInfoReader.h"
#include "help/QtHelpViewer.h"
#include "platform/Desktop.h"
#include "platform/FileSystemObject.h"
#include "platform/ReadAhead.h"

#include <memory>

namespace quavernet {

/// Fills `services` when it is made, and must outlive their use. Wants an application to be there. Whoever
/// needs another answer to one of them puts it into `services` afterwards.
class RealServices {
public:
    RealServices();
    RealServices(const RealServices&) = delete;
    RealServices& operator=(const RealServices&) = delete;

private:
    /// Brings to disk what is still held in memory.
    void Save();

    QtSettings m_settings;
    QtShell m_shell;
    QtMsgBox m_msgBox;
    QtDialogs m_dialogs;
    QtEvents m_events;
    SystemClock m_clock;
    std::shared_ptr<posix::ReaderPool> m_readers;
    PosixFiles m_files;
    OggInfoReader m_oggInfo{m_files};
    OggCommentWriter m_oggComments{m_files};
    QtHelpViewer m_helpViewer;
    std::unique_ptr<Desktop> m_desktop;
    std::unique_ptr<FileSystemObject> m_fileSystem;
    std::unique_ptr<ReadAhead> m_readAhead;
};

} // namespace quavernet
