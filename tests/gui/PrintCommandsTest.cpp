// The print command by its three ways in, the print dialog itself, and what comes while the list prints.
#include "gui/PrintTest.h"

#include "adapters/qt/DialogLanguage.h"
#include "adapters/qt/QtDialogs.h"
#include "playback/frmPlayer.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>

#include <gmock/gmock.h>

#include <filesystem>
#include <functional>

namespace quavernet::test {

namespace {

class PrintCommandsTest : public PrintTest {
protected:
    /// Prints many pages; the action runs at each point at which events are let run.
    void PrintWith(const std::function<void()>& action) {
        bool inside = false;
        events.onDoEvents = [&] {
            if (mainModule.ActsAlone && !inside) {
                inside = true;
                ++points;
                action();
                inside = false;
            }
        };
        services.events = &events;
        PrintTo(path);
        services.events = &realEvents;
        events.onDoEvents = nullptr;
        EXPECT_GE(points, 1);
        EXPECT_EQ(PanelText(Panel::Scanning), "");
        EXPECT_EQ(Form().cursor().shape(), Qt::ArrowCursor);
        EXPECT_FALSE(Action("cancel").isEnabled());
        EXPECT_TRUE(Action("scan").isEnabled());
    }

    const std::string path = folder / "list.pdf";
    int points = 0;
};

class PrintDialogTest : public GuiTest {
protected:
    /// Nobody's printers: the dialog finds none, and nothing of a test comes out on paper.
    PrintDialogTest() { qputenv("CUPS_SERVER", QByteArray::fromStdString(folder / "cups.sock")); }
    ~PrintDialogTest() override { SetDialogLanguage("ENG"); }

    /// Does something with the print dialog that comes up next.
    static void WithDialog(const std::function<void(QPrintDialog&)>& action) {
        QTimer::singleShot(0, [action] {
            auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            action(*dialog);
        });
    }
    template <typename T> static T& In(QDialog& dialog, const char* name) {
        T* found = dialog.findChild<T*>(QLatin1String(name));
        if (found == nullptr) {
            throw std::runtime_error(std::string("no control ") + name);
        }
        return *found;
    }
    static void Press(QDialog& dialog, QDialogButtonBox::StandardButton button) {
        QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
    }

    QtDialogs systemDialogs;
};

} // namespace

TEST_F(PrintCommandsTest, BothMenusAndTheToolbarPrint) {
    StartWithRows(3);
    for (const char* name : {"mnuPrint", "mnuKontextPrint", "print"}) {
        const std::string target = folder / std::string(name) + ".pdf";
        dialogs.printer = Pdf(target);
        Action(name).trigger();
        EXPECT_THAT(ReadFile(target), ::testing::StartsWith("%PDF-")) << name;
    }
    EXPECT_EQ(dialogs.shown, Texts(3, "printer Quavernet Datei Liste"));
}

TEST_F(PrintCommandsTest, ACancelledDialogChangesNothing) {
    StartWithRows(3);
    Form().Panes().Status().SetText(Panel::Scanning, "Bereit!");
    Action("print").trigger();
    EXPECT_EQ(PanelText(Panel::Scanning), "Bereit!");
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(PrintCommandsTest, ThePanelTheHourglassAndCancelAreThereWhileItPrints) {
    StartWithRows(500);
    PrintWith([this] {
        EXPECT_EQ(PanelText(Panel::Scanning), "Drucke Liste...");
        EXPECT_EQ(Form().cursor().shape(), Qt::WaitCursor);
        EXPECT_TRUE(Action("cancel").isEnabled());
        EXPECT_FALSE(std::filesystem::exists(path)) << "the file is there when it is complete";
    });
    EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(PrintCommandsTest, TheToolbarsCancelEndsThePrintAndLeavesTheOldFile) {
    StartWithRows(3000);
    std::filesystem::create_directory(folder / "out");
    const std::string target = folder / "out/list.pdf";
    WriteFile(target, "old");
    dialogs.printer = Pdf(target);
    events.onDoEvents = [&] {
        ++points;
        Action("cancel").trigger();
    };
    services.events = &events;
    Action("print").trigger();
    services.events = &realEvents;
    EXPECT_EQ(points, 1);
    EXPECT_EQ(ReadFile(target), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder / "out"), {}), 1);
    EXPECT_EQ(PanelText(Panel::Scanning), "");
    EXPECT_FALSE(Action("cancel").isEnabled());
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(PrintCommandsTest, NothingElseActsWhileItPrints) {
    AddFile("Abba", "One");
    StartWithRows(500);
    dialogs.folder = folder.Path();
    const std::size_t dialogsBefore = dialogs.shown.size();
    PrintWith([this] {
        for (const char* name : {"mnuScan", "mnuPrint", "print", "mnuFileImport", "mnuViewLanguageENG",
                                 "mnuCleanDatabase", "mnuKontextDelete", "cmdPlay"}) {
            EXPECT_FALSE(Form().Parts().Commands.Run(name)) << name;
        }
        QTest::mouseDClick(Grid().viewport(), Qt::LeftButton, {}, CellCentre(1));
        QTest::mouseDClick(Grid().horizontalHeader()->viewport(), Qt::LeftButton, {}, QPoint(20, 5));
        QTest::mouseClick(&Control<QLabel>("lblB"), Qt::LeftButton);
        EXPECT_FALSE(Drop(*Grid().viewport(), {folder / "new.mp3"}, QPoint(40, 8)));
    });
    EXPECT_EQ(dialogs.shown.size(), dialogsBefore + 1);
    EXPECT_TRUE(dialogs.titles.empty());
    EXPECT_EQ(mainModule.SortDirection, "ASC");
    EXPECT_EQ(mainModule.LetterFilter, "All");
    EXPECT_EQ(mainModule.Language, "GER");
    EXPECT_EQ(Grid().Model().Rows().Count(), 500U);
}

TEST_F(PrintCommandsTest, ColumnsThatAreDraggedMeanwhileArePrintedAsTheyWere) {
    StartWithRows(200);
    PrintTo(path);
    const std::vector<Texts> before = Pages(path);
    PrintWith([this] { Grid().setColumnWidth(0, 0); });
    EXPECT_EQ(Pages(path), before);
    EXPECT_EQ(Grid().columnWidth(0), 0) << "what was dragged stays";
}

TEST_F(PrintCommandsTest, AWindowThatIsClosedMeanwhileClosesAfterIt) {
    mainModule.PlayerOpen = true;
    StartWithRows(500);
    PrintWith([this] {
        mainModule.PlayerOpen = true; // The process lives on.
        EXPECT_FALSE(Form().close());
        EXPECT_TRUE(Form().isVisible());
    });
    EXPECT_TRUE(std::filesystem::exists(path));
    EXPECT_TRUE(QTest::qWaitFor([this] { return !Form().isVisible(); }));
}

TEST_F(PrintCommandsTest, NothingIsPrintedWhileAScanRuns) {
    StartWithRows(3);
    mainModule.ScanRunning = true;
    for (const char* name : {"mnuPrint", "mnuKontextPrint", "print"}) {
        EXPECT_FALSE(Form().Parts().Commands.Run(name)) << name;
    }
    mainModule.ScanRunning = false;
    EXPECT_TRUE(dialogs.shown.empty());
}

TEST_F(PrintCommandsTest, NothingActsWhileTheDialogIsOpen) {
    StartWithRows(3);
    int rounds = 0;
    dialogs.onShow = [&] {
        ++rounds;
        EXPECT_FALSE(Form().Parts().Commands.Run("print"));
        EXPECT_FALSE(Form().Parts().Commands.Run("mnuScan"));
    };
    PrintTo(path);
    EXPECT_EQ(rounds, 1);
}

TEST_F(PrintDialogTest, WithoutAPrinterItOffersAFileInTheDocumentsFolderAndPrintsToIt) {
    QString offered;
    WithDialog([&](QPrintDialog& dialog) {
        auto& field = In<QLineEdit>(dialog, "filename");
        offered = field.text();
        field.setText(ToQString(folder / "Märchen.pdf"));
        Press(dialog, QDialogButtonBox::Ok);
    });
    const std::optional<ChosenPrinter> chosen = systemDialogs.ShowPrinter("The list");
    EXPECT_TRUE(offered.endsWith(QStringLiteral("/The list.pdf"))) << FromQString(offered);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->Copies, 1);
    EXPECT_EQ(chosen->Orientation, Printer::Orientation::Portrait);
    chosen->Target->StartDoc("The list");
    chosen->Target->EndDoc();
    EXPECT_THAT(ReadFile(folder / "Märchen.pdf"), ::testing::StartsWith("%PDF-"));
}

TEST_F(PrintDialogTest, CopiesAndOrientationAreThoseOfTheDialog) {
    WithDialog([&](QPrintDialog& dialog) {
        In<QLineEdit>(dialog, "filename").setText(ToQString(folder / "list.pdf"));
        In<QSpinBox>(dialog, "copies").setValue(3);
        dialog.printer()->setPageOrientation(QPageLayout::Landscape);
        Press(dialog, QDialogButtonBox::Ok);
    });
    const std::optional<ChosenPrinter> chosen = systemDialogs.ShowPrinter("List");
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->Copies, 3);
    EXPECT_EQ(chosen->Orientation, Printer::Orientation::Landscape);
    EXPECT_GT(chosen->Target->ScaleWidth(), chosen->Target->ScaleHeight());
}

TEST_F(PrintDialogTest, ACancelGivesNothing) {
    WithDialog([](QPrintDialog& dialog) { Press(dialog, QDialogButtonBox::Cancel); });
    EXPECT_FALSE(systemDialogs.ShowPrinter("List"));
}

TEST_F(PrintDialogTest, ThereIsNoRangeToChoose) {
    WithDialog([](QPrintDialog& dialog) {
        EXPECT_FALSE(dialog.testOption(QAbstractPrintDialog::PrintPageRange));
        EXPECT_FALSE(dialog.testOption(QAbstractPrintDialog::PrintSelection));
        EXPECT_FALSE(dialog.testOption(QAbstractPrintDialog::PrintCurrentPage));
        dialog.reject();
    });
    EXPECT_FALSE(systemDialogs.ShowPrinter("List"));
}

TEST_F(PrintDialogTest, ItSpeaksTheProgramsLanguage) {
    for (const auto& [language, title, cancel] :
         {std::tuple("GER", "Drucken", "Abbrechen"), {"ENG", "Print", "Cancel"}}) {
        SetDialogLanguage(language);
        std::string shownTitle;
        std::string shownCancel;
        WithDialog([&](QPrintDialog& dialog) {
            shownTitle = FromQString(dialog.windowTitle());
            shownCancel =
                FromQString(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->text());
            dialog.reject();
        });
        EXPECT_FALSE(systemDialogs.ShowPrinter("List"));
        EXPECT_EQ(shownTitle, title);
        EXPECT_EQ(shownCancel, cancel);
    }
}

TEST_F(PrintDialogTest, APrinterThatIsNotThereFailsBeforeAnythingIsPrinted) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setOutputFormat(QPrinter::NativeFormat);
    PaintedPages pages(std::make_unique<PrinterQueue>(std::move(printer)));
    try {
        pages.StartDoc("List");
        ADD_FAILURE() << "it has begun";
    } catch (const RuntimeError& failure) {
        EXPECT_EQ(failure.Number(), ErrorNumber::PrinterError);
    }
}

TEST_F(PrintDialogTest, APrinterTakesCopiesAndOrientation) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    const QPrinter& real = *printer;
    PaintedPages pages(std::make_unique<PrinterQueue>(std::move(printer)));
    pages.SetCopies(3);
    pages.SetOrientation(Printer::Orientation::Landscape);
    EXPECT_EQ(real.copyCount(), 3);
    EXPECT_EQ(real.pageLayout().orientation(), QPageLayout::Landscape);
    EXPECT_GT(pages.ScaleWidth(), pages.ScaleHeight());
    pages.SetOrientation(Printer::Orientation::Portrait);
    EXPECT_EQ(real.pageLayout().orientation(), QPageLayout::Portrait);
}

TEST_F(PrintDialogTest, APrinterThatHasGoneAtTheEndFails) {
    PrinterQueue queue(std::make_unique<QPrinter>(QPrinter::HighResolution));
    try {
        queue.Close();
        ADD_FAILURE() << "it has been handed over";
    } catch (const RuntimeError& failure) {
        EXPECT_EQ(failure.Number(), ErrorNumber::PrinterError);
    }
}

} // namespace quavernet::test
