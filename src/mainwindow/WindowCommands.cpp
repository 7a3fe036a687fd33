#include "mainwindow/WindowCommands.h"

#include "app/CommandRegistry.h"
#include "app/Controls.h"
#include "app/MainModule.h"
#include "app/Registry.h"
#include "app/ShowHelp.h"
#include "mainwindow/frmAbout.h"

namespace quavernet {

namespace {

void SwitchLanguage(const std::string& language, Controls& controls,
                    const std::function<void()>& loadStrings) {
    controls.SetChecked("mnuViewLanguageGER", language == "GER");
    controls.SetChecked("mnuViewLanguageENG", language == "ENG");
    SaveSetting("Language", language);
    mainModule.Language = language;
    loadStrings();
}

} // namespace

void RegisterWindowCommands(CommandRegistry& commands, Controls& controls, QWidget& window,
                            const std::function<void()>& loadStrings) {
    commands.Register("mnuExit", [&window] { window.close(); });
    commands.Register("mnuViewLanguageGER",
                      [&controls, loadStrings] { SwitchLanguage("GER", controls, loadStrings); });
    commands.Register("mnuViewLanguageENG",
                      [&controls, loadStrings] { SwitchLanguage("ENG", controls, loadStrings); });
    commands.Register("mnuAddToPlaylist",
                      [&controls] { mainModule.AlwaysAddToPlaylist = controls.Checked("mnuAddToPlaylist"); });
    commands.Register("mnuExternalPlayer",
                      [&controls] { mainModule.UseExternalPlayer = controls.Checked("mnuExternalPlayer"); });
    commands.Register("mnuHelp", [] { ShowHelp("HTML\\start.html"); });
    commands.Register("mnuAbout", [&window] { frmAbout(&window).exec(); });
}

} // namespace quavernet
