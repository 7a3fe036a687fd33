#include "mainwindow/Main.h"

#include "app/LibraryFailure.h"
#include "app/LoadResString.h"
#include "app/MainModule.h"
#include "app/TextNumbers.h"
#include "browser/ListFaults.h"
#include "library/DatabaseCheck.h"
#include "tree/LoadTree.h"

namespace quavernet {

namespace {

constexpr std::int32_t LeastBrowserMajor = 5;
constexpr std::int32_t LeastBrowserMinor = 5;

[[noreturn]] void EndWithBox(const std::string& text, const std::string& title) {
    services.msgBox->Show(text, title, MsgBox::Icon::Critical, MsgBox::Buttons::Ok);
    ExitProgram();
}

// The help pages need a browser component of version 5.5 or later.
void CheckBrowser() {
    std::int32_t major = 0;
    std::int32_t minor = 0;
    std::int32_t build = 0;
    if (!GetIEVersion(major, minor, build)) {
        EndWithBox(LoadResString(417) + "\n" + LoadResString(420), LoadResString(421));
    }
    if (major < LeastBrowserMajor || (major == LeastBrowserMajor && minor < LeastBrowserMinor)) {
        EndWithBox(LoadResString(417) + "\n" + LoadResString(418) + std::to_string(major) + "." +
                       std::to_string(minor) + "." + std::to_string(build) + ".",
                   LoadResString(419));
    }
}

void OpenLibrary() {
    mainModule.ConnectionString = "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + LocateDatabase();
    std::string details;
    try {
        mainModule.Connection = services.createConnection();
        mainModule.Connection->Open(mainModule.ConnectionString);
        return;
    } catch (const LibraryError& error) {
        details = LibraryFailureText(error);
    } catch (const RuntimeError& error) {
        details = FailureReasonText(error.Description());
    }
    // The box names what has to be installed, whatever the reason was; that one is beneath.
    services.msgBox->ShowWithDetails(
        LoadResString(433) + "\n" + LoadResString(434) + "\n" + LoadResString(435) + LoadResString(436),
        details, LoadResString(437), MsgBox::Icon::Critical, MsgBox::Buttons::OkCancel);
    ExitProgram();
}

} // namespace

void Main(StartView& start) {
    mainModule.TreeLoaded = false;
    CheckBrowser();
    mainModule.ScreenResolution = start.ScreenResolution();
    mainModule.SuppressComboClick = true;
    mainModule.PlayerOpen = false;
    OpenLibrary();
    mainModule.TagComponent = services.createTagComponent();
    start.ShowMain();
    start.ShowSplash();
    start.Work().DoEvents();
    CheckDatabase(start.Work());
    mainModule.ListFaultsDue = true;
    if (!mainModule.LoadOverSearch) {
        start.Views().LoadDatabase("");
    }
    if (mainModule.ListFaultsDue) { // No list was loaded.
        FindListFaults();
    }
    start.Views().LoadTree();
    start.Work().DoEvents();
    mainModule.SuppressComboClick = false;
    std::string ready = LoadResString(Texts::Ready);
    for (const std::string& faults : {ListFaultsText(), TreeFaultsText()}) {
        ready += faults.empty() ? "" : " " + faults;
    }
    start.Work().SetPanel(Panel::Scanning, ready);
}

} // namespace quavernet
