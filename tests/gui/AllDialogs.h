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

class AllDialogsTest : public GuiTest {
protected:
    AllDialogsTest() {
        AddFile("Abba", "One");
        WriteBytes(folder / "One.mp3", Mp3Bytes("One", "Abba", "Best"));
        mainModule.Connection->Execute("Update Files set Path = '" + (folder / "One.mp3") + "'");
        Start();
        ClickRow(1);
    }

    EditingParts Parts() {
        return {Grid(), Form().Parts().Views, windows->Player(), Form().Parts().Work,
                [](const std::string&) {}};
    }

    /// Made in the current language, and shown. The first ones hold the program while they are open.
    std::vector<std::unique_ptr<QDialog>> ModalDialogs() {
        std::vector<std::unique_ptr<QDialog>> made;
        made.push_back(std::make_unique<frmRemind>(&Form()));
        made.push_back(std::make_unique<frmScanpath>(&Form()));
        made.push_back(std::make_unique<frmAbout>(&Form()));
        made.push_back(std::make_unique<frmEditTree>(&Form()));
        made.push_back(
            std::make_unique<frmCategoryName>(&Form(), std::vector<std::string>(), Form().Parts().Views));
        made.push_back(std::make_unique<frmRandomPlay>(&Form()));
        made.push_back(std::make_unique<frmOptToplist>(&Form()));
        made.push_back(std::make_unique<frmFileName>(&Form(), Form().Parts().Work));
        made.push_back(std::make_unique<frmFilesName>(&Form()));
        made.push_back(std::make_unique<frmKonvertOptions>(&Form()));
        made.push_back(std::make_unique<frmCoverSearchOptions>(&Form()));
        made.push_back(std::make_unique<frmDetails>(Parts(), &Form()));
        made.push_back(std::make_unique<frmDetails>(Parts(), &Form()));
        made.back()->findChild<QPushButton*>(QStringLiteral("cmdEdit"))->click();
        for (const auto& dialog : made) {
            dialog->show();
        }
        return made;
    }
    std::vector<std::unique_ptr<QDialog>> Dialogs() {
        std::vector<std::unique_ptr<QDialog>> made = ModalDialogs();
        auto log = std::make_unique<frmScanLog>(&Form());
        log->Show();
        made.push_back(std::move(log));
        auto covers = std::make_unique<frmCovers>(&Form());
        covers->Form_Load();
        made.push_back(std::move(covers));
        auto chart = std::make_unique<frmChart>(&Form(), Form().Parts().Views, windows->Player());
        chart->Open(mainModule.ChartShowTop);
        made.push_back(std::move(chart));
        for (const auto& dialog : made) {
            dialog->show();
        }
        return made;
    }
};

} // namespace quavernet::test
