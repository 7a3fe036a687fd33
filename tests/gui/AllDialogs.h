// Every dialog of the program over a main window with one file in its list, for rules that hold for all.
#pragma once

#include "gui/GuiTest.h"

#include "editing/frmDetails.h"
#include "editing/frmFileName.h"
#include "editing/frmFilesName.h"
#include "extras/frmChart.h"
#include "extras/frmCoverSearchOptions.h"
#include "extras/frmCovers.h"
#include "extras/frmOptToplist.h"
#include "mainwindow/frmAbout.h"
#include "output/frmKonvertOptions.h"
#include "playback/frmRandomPlay.h"
#include "scanner/frmRemind.h"
#include "scanner/frmScanLog.h"
#include "scanner/frmScanpath.h"
#include "support/SmallAudio.h"
#include "tree/frmCategoryName.h"
#include "tree/frmEditTree.h"

#include <QDialog>
#include <QPushButton>

#include <memory>
#include <vector>

namespace quavernet::test {

inline EditingParts EditingPartsOf(frmMain& form, PlayerWindow& player) {
    return {form.Panes().Grid(), form.Parts().Views, player, form.Parts().Work, [](const std::string&) {}};
}

/// Made in the current language over a main window with a selected row, and shown: those that hold the
/// program while they are open.
inline std::vector<std::unique_ptr<QDialog>> MakeModalDialogs(frmMain& form, PlayerWindow& player) {
    const EditingParts parts = EditingPartsOf(form, player);
    std::vector<std::unique_ptr<QDialog>> made;
    made.push_back(std::make_unique<frmRemind>(&form));
    made.push_back(std::make_unique<frmScanpath>(&form));
    made.push_back(std::make_unique<frmAbout>(&form));
    made.push_back(std::make_unique<frmEditTree>(&form));
    made.push_back(std::make_unique<frmCategoryName>(&form, std::vector<std::string>(), parts.Views));
    made.push_back(std::make_unique<frmRandomPlay>(&form));
    made.push_back(std::make_unique<frmOptToplist>(&form));
    made.push_back(std::make_unique<frmFileName>(&form, parts.Work));
    made.push_back(std::make_unique<frmFilesName>(&form, parts.Work));
    made.push_back(std::make_unique<frmKonvertOptions>(&form));
    made.push_back(std::make_unique<frmCoverSearchOptions>(&form));
    made.push_back(std::make_unique<frmDetails>(parts, &form));
    made.push_back(std::make_unique<frmDetails>(parts, &form));
    made.back()->findChild<QPushButton*>(QStringLiteral("cmdEdit"))->click();
    for (const auto& dialog : made) {
        dialog->show();
    }
    return made;
}

/// Those, and the three that stay open beside the main window.
inline std::vector<std::unique_ptr<QDialog>> MakeDialogs(frmMain& form, PlayerWindow& player) {
    std::vector<std::unique_ptr<QDialog>> made = MakeModalDialogs(form, player);
    auto log = std::make_unique<frmScanLog>(&form);
    log->Show();
    made.push_back(std::move(log));
    auto covers = std::make_unique<frmCovers>(&form);
    covers->Form_Load();
    made.push_back(std::move(covers));
    auto chart = std::make_unique<frmChart>(&form, form.Parts().Views, player);
    chart->Open(mainModule.ChartShowTop);
    made.push_back(std::move(chart));
    for (const auto& dialog : made) {
        dialog->show();
    }
    return made;
}

class AllDialogsTest : public GuiTest {
protected:
    AllDialogsTest() {
        AddFile("Abba", "One");
        WriteBytes(folder / "One.mp3", Mp3Bytes("One", "Abba", "Best"));
        mainModule.Connection->Execute("Update Files set Path = '" + (folder / "One.mp3") + "'");
        Start();
        ClickRow(1);
    }

    EditingParts Parts() { return EditingPartsOf(Form(), windows->Player()); }
    std::vector<std::unique_ptr<QDialog>> ModalDialogs() {
        return MakeModalDialogs(Form(), windows->Player());
    }
    std::vector<std::unique_ptr<QDialog>> Dialogs() { return MakeDialogs(Form(), windows->Player()); }
};

} // namespace quavernet::test
