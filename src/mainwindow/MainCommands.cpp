#include "mainwindow/MainCommands.h"

#include "app/MainModule.h"
#include "app/Registry.h"
#include "app/ShowHelp.h"
#include "browser/FilterEvents.h"
#include "library/CleanDatabase.h"
#include "mainwindow/MainMenu.h"
#include "mainwindow/MainPanes.h"
#include "mainwindow/ScanController.h"
#include "mainwindow/frmAbout.h"
#include "mainwindow/frmMain.h"
#include "scanner/frmRemind.h"
#include "scanner/frmScanpath.h"

#include <QKeyEvent>

namespace quavernet {

namespace {

/// The main window as the cleaning of the library sees it.
class CleanView : public CleanWindow {
public:
    explicit CleanView(frmMain& form) : m_form(form) {}

    void SetMousePointer(int pointer) override { m_form.SetMousePointer(pointer); }
    void SetScanningPanel(const std::string& text) override { m_form.SetScanningPanel(text); }
    void LoadTree() override { m_form.LoadTree(); }
    void LoadDatabase(const std::string& list) override { m_form.LoadDatabase(list); }

private:
    frmMain& m_form;
};

} // namespace

MainCommands::MainCommands(frmMain& form, ScanController& scan) : m_form(form) {
    OnMenu("mnuScan", [&scan] { scan.mnuScan_Click(); });
    OnToolbar("scan", [&scan] { scan.mnuScan_Click(); });
    OnToolbar("cancel", [&scan] { scan.Cancel(); });
    OnMenu("mnuExit", [this] { m_form.close(); });

    const auto reload = [this](bool) { m_form.LoadDatabase({}); };
    OnPair("mnump3", "mnuKontextMp3", reload);
    OnPair("mnuogg", "mnuKontextOgg", reload);
    OnPair("mnuwav", "mnuKontextWav", reload);
    OnPair("mnuShowGridlines", "mnuKontextShowGridlines",
           [this](bool checked) { m_form.SetGridLines(checked); });
    OnMenu("mnuViewLanguageGER", [this] { SwitchLanguage("GER"); });
    OnMenu("mnuViewLanguageENG", [this] { SwitchLanguage("ENG"); });

    // The other scan options are nothing but their check marks.
    OnMenu("mnuOptionsScanLog",
           [this] { mainModule.ScanLogEnabled = m_form.Menu().Checked("mnuOptionsScanLog"); });
    OnMenu("mnuAddToPlaylist",
           [this] { mainModule.AlwaysAddToPlaylist = m_form.Menu().Checked("mnuAddToPlaylist"); });
    OnMenu("mnuExternalPlayer",
           [this] { mainModule.UseExternalPlayer = m_form.Menu().Checked("mnuExternalPlayer"); });
    OnMenu("mnuOptionsLoadOverSearch", [this] {
        // The click has turned the mark round already.
        const bool before = !m_form.Menu().Checked("mnuOptionsLoadOverSearch");
        m_form.Menu().SetChecked("mnuOptionsLoadOverSearch", mnuOptionsLoadOverSearch_Click(before));
    });
    OnMenu("mnuCleanDatabase", [this] {
        CleanView view(m_form);
        mnuCleanDatabase_Click(view);
    });
    m_form.Panes().Filter().txtSearch().installEventFilter(this);
    OnMenu("mnuStandardScanningPath", [this] { frmScanpath(&m_form).exec(); });
    OnMenu("mnuRemind", [this] { frmRemind(&m_form).exec(); });
    OnMenu("mnuHelp", [] { ShowHelp("HTML\\start.html"); });
    OnMenu("mnuAbout", [this] { frmAbout(&m_form).exec(); });
}

bool MainCommands::eventFilter(QObject* watched, QEvent* event) {
    const auto* search = qobject_cast<QLineEdit*>(watched);
    if (search == nullptr || event->type() != QEvent::ShortcutOverride || search->hasSelectedText() ||
        !static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy)) {
        return false;
    }
    event->ignore();
    return true;
}

void MainCommands::OnMenu(std::string_view name, std::function<void()> command) {
    connect(m_form.Menu().Item(name), &QAction::triggered, this, std::move(command));
}

void MainCommands::OnToolbar(std::string_view key, std::function<void()> command) {
    connect(m_form.Panes().ToolbarButton(key), &QAction::triggered, this, std::move(command));
}

void MainCommands::OnPair(std::string_view first, std::string_view second,
                          const std::function<void(bool)>& command) {
    for (const std::string_view name : {first, second}) {
        OnMenu(name, [this, first, second, name, command] {
            const bool checked = m_form.Menu().Checked(name);
            m_form.Menu().SetChecked(first, checked);
            m_form.Menu().SetChecked(second, checked);
            command(checked);
        });
    }
}

void MainCommands::SwitchLanguage(const std::string& language) {
    m_form.Menu().SetChecked("mnuViewLanguageGER", language == "GER");
    m_form.Menu().SetChecked("mnuViewLanguageENG", language == "ENG");
    SaveSetting("Language", language);
    mainModule.Language = language;
    m_form.LoadStrings();
}

} // namespace quavernet
