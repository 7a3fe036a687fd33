#include "SilentScanner.h"

#include "scanner/OggBatches.h"
#include "scanner/ScanDriver.h"

#include <filesystem>
#include <utility>

namespace quavernet::bench {

SilentScanner::SilentScanner(const std::string& music, const std::string& library, std::string emptyLibrary,
                             bool takesOgg)
    : m_library(library), m_emptyLibrary(std::move(emptyLibrary)), m_takesOgg(takesOgg) {
    m_program.settings.Set("", "", "ScanpathValue", "1");
    m_program.settings.Set("", "", "Scanpath", music);
}

void SilentScanner::OpenEmpty() {
    m_program.CloseLibrary();
    RemoveLibrary(m_library);
    std::filesystem::copy_file(m_emptyLibrary, m_library);
    m_program.OpenLibrary(m_library);
}

void SilentScanner::Scan(bool quick) {
    SilentWork work;
    SilentScanView view;
    SilentScanLog log;
    view.options.QuickScan = quick;
    view.options.ScanOgg = m_takesOgg;
    OggBatches oggPass;
    ScanDriver driver(work, view, log, &oggPass);
    driver.StartScan();
    mainModule.Connection->Commit();
}

} // namespace quavernet::bench
