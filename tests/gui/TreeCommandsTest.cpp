// The commands of the tree in the real window: by the menu, by keys, and inside each other.
#include "gui/GuiTest.h"
#include "tree/TreeView.h"

#include "tree/TreePane.h"

#include <QDialog>
#include <QListWidget>
#include <QMenu>
#include <QTimer>

namespace quavernet::test {

namespace {

class TreeCommandsTest : public GuiTest {
protected:
    /// "Alpha" holds Two.mp3 and One.mp3, "Beta" nothing.
    TreeCommandsTest() {
        AddFile("Abba", "One");
        AddFile("Cure", "Two");
        for (const char* statement :
             {"Insert into Categories (Category) values ('Alpha')",
              "Insert into Categories (Category) values ('Beta')",
              "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (2, 1, "
              "1, 'Alpha', 'Two.mp3')",
              "Insert into FileCategories (File_id, Category_id, [Position], Parent, Filename) values (1, 1, "
              "2, 'Alpha', 'One.mp3')"}) {
            mainModule.Connection->Execute(statement);
        }
        Start();
    }
    ~TreeCommandsTest() override { services.events = &realEvents; }

    TreeModel& Model() { return Form().Tree().Model(); }
    QWidget& Tree() { return Control<QWidget>("TreeView"); }
    Texts Nodes() {
        Texts texts;
        for (const TreeNode& node : Model().Nodes()) {
            texts.push_back(node.Text);
        }
        return texts;
    }
    std::string Value(const std::string& statement) {
        return mainModule.Connection->Query(statement).At(0, 0).Text();
    }
    /// Runs the action on the dialog that opens next, and closes it.
    void OnceDialogOpens(const std::function<void(QDialog&)>& action) {
        QObject::connect(&m_look, &QTimer::timeout, &Form(), [this, action] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr) {
                m_look.disconnect();
                ++dialogs;
                EXPECT_EQ(FromQString(dialog->objectName()), "frmEditTree");
                EXPECT_EQ(dialog->parentWidget(), &Form());
                action(*dialog);
                dialog->close();
            }
        });
        m_look.start(1);
    }
    /// Triggers an item that opens a dialog.
    void WithDialog(const char* item, const std::function<void(QDialog&)>& action) {
        const int before = dialogs;
        OnceDialogOpens(action);
        Action(item).trigger();
        EXPECT_EQ(dialogs, before + 1) << item;
    }
    /// Runs the action at each point at which events are let run, but not inside itself.
    void AtEachEventPoint(const std::function<void()>& action) {
        events.onDoEvents = [this, action] {
            if (!m_inside) {
                m_inside = true;
                ++points;
                action();
                m_inside = false;
            }
        };
        services.events = &events;
    }
    int points = 0;
    int dialogs = 0;

private:
    QTimer m_look;
    bool m_inside = false;
};

} // namespace

TEST_F(TreeCommandsTest, TheMenuOfEachKindOfNodeShowsItsCommands) {
    const auto visible = [this] {
        Texts names;
        for (const char* name : {"mnuNewCategory", "mnuEditCategory", "mnuDelete", "mnuDeleteContent",
                                 "mnuShowInGrid", "mnuEditTree"}) {
            if (Action(name).isVisible() && Action(name).isEnabled()) {
                names.emplace_back(name);
            }
        }
        return names;
    };
    for (const auto& [kind, expected] :
         {std::pair{NodeKind::Root, Texts{"mnuDeleteContent", "mnuEditTree"}},
          std::pair{NodeKind::Category, Texts{"mnuNewCategory", "mnuEditCategory", "mnuDelete",
                                              "mnuDeleteContent", "mnuShowInGrid", "mnuEditTree"}},
          std::pair{NodeKind::File, Texts{"mnuDelete", "mnuShowInGrid", "mnuEditTree"}}}) {
        for (const TreeMenuItem& item : TreeMenuItems(kind)) {
            Form().Parts().Named.SetVisible(item.Name, item.Visible);
            Form().Parts().Named.SetEnabled(item.Name, item.Visible);
        }
        EXPECT_EQ(visible(), expected);
    }
    EXPECT_EQ(Caption(Action("mnuDelete").text()), "Löschen");
    Action("mnuViewLanguageENG").trigger();
    EXPECT_EQ(Caption(Action("mnuDelete").text()), "Delete");
}

TEST_F(TreeCommandsTest, TheDeleteKeyDeletesTheSelectedNodeButNotTheRoot) {
    Model().Select("Parent");
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    EXPECT_EQ(Nodes().size(), 5U);
    Model().Select("file1pos1");
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    EXPECT_EQ(Nodes(), (Texts{"Bibliothek", "Alpha (01:05)", "Beta", "One.mp3"}));
    EXPECT_FALSE(Model().HasSelection());
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    EXPECT_EQ(Nodes().size(), 4U) << "nothing is selected after a rebuild";
    Model().Select("CAT_Alpha");
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    EXPECT_EQ(Nodes(), (Texts{"Bibliothek", "Beta"}));
    EXPECT_EQ(Value("Select Count(*) from Files"), "2");
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(TreeCommandsTest, ADeleteThatFailsIsSilentByKeyAndByMenu) {
    mainModule.Connection->Execute("Update Files Set Name = 'new.mp3' where File_id = 2");
    Form().Tree().LoadTree();
    Model().Select("file1pos1");
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    Action("mnuDelete").trigger();
    EXPECT_EQ(Value("Select Count(*) from FileCategories"), "2");
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(TreeCommandsTest, TheWholeTreeIsClearedAfterAYes) {
    Model().Select("Parent");
    msgBox.answers = {MsgBox::Answer::No, MsgBox::Answer::Yes};
    Action("mnuDeleteContent").trigger();
    EXPECT_EQ(Nodes().size(), 5U);
    EXPECT_TRUE(Model().HasSelection()) << "a No builds nothing";
    Action("mnuDeleteContent").trigger();
    EXPECT_EQ(Nodes(), Texts{"Bibliothek"});
    EXPECT_EQ(Value("Select Count(*) from Categories"), "0");
}

TEST_F(TreeCommandsTest, AClearedTreeWithAnExpandedCategoryIsShownEmptyAndStaysSilent) {
    mainModule.TreeNodeData.Add("CAT_Alpha");
    Model().Select("Parent");
    msgBox.answers = {MsgBox::Answer::Yes};
    EXPECT_NO_THROW((void)Form().Parts().Commands.Run("mnuDeleteContent"));
    EXPECT_EQ(Nodes(), Texts{"Bibliothek"});
    EXPECT_EQ(msgBox.shown.size(), 1U);
    EXPECT_THROW(Form().Tree().LoadTree(), RuntimeError) << "the next rebuild looks for the category too";
    EXPECT_EQ(Nodes(), Texts{"Bibliothek"});
    mainModule.TreeNodeData.Clear();
}

TEST_F(TreeCommandsTest, ShowInGridListsTheFilesAndTheNextLoadIsOrdinaryAgain) {
    Model().Select("file1pos1");
    Action("mnuShowInGrid").trigger();
    EXPECT_EQ(Listed(), Texts{"Cure"});
    Model().Select("CAT_Beta");
    Action("mnuShowInGrid").trigger();
    EXPECT_EQ(Listed(), Texts{"Cure"}) << "an empty category leaves the list";
    Model().Select("CAT_Alpha");
    Action("mnuShowInGrid").trigger();
    EXPECT_EQ(Listed(), (Texts{"Abba", "Cure"}));
    EXPECT_EQ(PanelText(Panel::Interprets), "2 Interpreten");
    Model().Select("file1pos1");
    Action("mnuShowInGrid").trigger();
    Form().Parts().List.LoadDatabase({});
    EXPECT_EQ(Listed(), (Texts{"Abba", "Cure"}));
}

TEST_F(TreeCommandsTest, WithoutASelectionNoCommandOfANodeDoesAnything) {
    for (const char* name : {"mnuDelete", "mnuDeleteContent", "mnuEditCategory", "mnuShowInGrid"}) {
        Action(name).trigger();
        EXPECT_EQ(Value("Select Count(*) from FileCategories"), "2") << name;
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << name;
    }
    EXPECT_TRUE(msgBox.shown.empty());
}

TEST_F(TreeCommandsTest, CtrlBOpensTheAdministrationAndTheTreeShowsItsChangesOnceItCloses) {
    OnceDialogOpens([&](QDialog& dialog) {
        auto* list = dialog.findChild<QListWidget*>(QStringLiteral("lstCategories"));
        QTest::keyClick(list, Qt::Key_Return);
        QTest::keyClicks(dialog.focusWidget(), QStringLiteral("Gamma"));
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
        EXPECT_EQ(Nodes().size(), 5U);
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    QTest::keyClick(Form().windowHandle(), Qt::Key_B, Qt::ControlModifier);
    EXPECT_EQ(dialogs, 1);
    EXPECT_EQ(Nodes(), (Texts{"Bibliothek", "Alpha (02:10)", "Beta", "Gamma", "Two.mp3", "One.mp3"}));
}

TEST_F(TreeCommandsTest, TheMenuOfTheTreeOpensTheDialogInItsThreeStates) {
    WithDialog("mnuEditTree", [](QDialog& dialog) {
        EXPECT_FALSE(dialog.findChild<QLineEdit*>(QStringLiteral("txtEdit"))->isEnabled());
    });
    WithDialog("mnuEditTree2", [](QDialog& dialog) {
        EXPECT_FALSE(dialog.findChild<QLineEdit*>(QStringLiteral("txtEdit"))->isEnabled());
    });
    WithDialog("mnuNewCategory", [](QDialog& dialog) {
        auto* field = dialog.findChild<QLineEdit*>(QStringLiteral("txtEdit"));
        EXPECT_TRUE(field->isEnabled());
        EXPECT_EQ(dialog.focusWidget(), field);
        EXPECT_EQ(FromQString(field->text()), "");
    });
    Model().Select("CAT_Alpha");
    WithDialog("mnuEditCategory", [](QDialog& dialog) {
        auto* field = dialog.findChild<QLineEdit*>(QStringLiteral("txtEdit"));
        EXPECT_EQ(dialog.focusWidget(), field);
        EXPECT_EQ(FromQString(field->selectedText()), "Alpha") << "the name, not the text with the length";
        EXPECT_EQ(dialog.findChild<QListWidget*>(QStringLiteral("lstCategories"))->currentRow(), 0);
    });
    EXPECT_FALSE(Model().HasSelection()) << "the tree was built again";
}

TEST_F(TreeCommandsTest, AnExpandedCategoryStaysExpandedWhenTheDialogCloses) {
    mainModule.TreeNodeData.Add("CAT_Alpha");
    WithDialog("mnuEditTree", [](QDialog&) {});
    EXPECT_TRUE(Model().Node("CAT_Alpha").Expanded);
    auto& view = Control<TreeView>("TreeView");
    const auto alpha = [&] { return view.model()->index(0, 0, view.model()->index(0, 0)); };
    view.collapse(alpha());
    WithDialog("mnuEditTree", [](QDialog&) {});
    EXPECT_FALSE(Model().Node("CAT_Alpha").Expanded) << "nor does a collapsed one expand";
    view.expand(alpha());
    Model().Select("CAT_Alpha");
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    EXPECT_EQ(Nodes(), (Texts{"Bibliothek", "Beta"}));
    EXPECT_TRUE(mainModule.TreeNodeData.Keys().empty());
}

TEST_F(TreeCommandsTest, TheDialogMayOpenWhileTheTreeIsBuilt) {
    for (const char* item : {"mnuEditTree", "mnuNewCategory"}) {
        bool opened = false;
        AtEachEventPoint([&] {
            if (!opened) {
                opened = true;
                WithDialog(item, [](QDialog& dialog) {
                    auto* field = dialog.findChild<QLineEdit*>(QStringLiteral("txtEdit"));
                    if (field->isEnabled()) {
                        field->setText(QStringLiteral("Gamma"));
                        QTest::keyClick(field, Qt::Key_Return);
                    }
                });
            }
        });
        Form().Tree().LoadTree();
        services.events = &realEvents;
        EXPECT_TRUE(opened) << item;
    }
    EXPECT_TRUE(Model().Contains("CAT_Gamma")) << "the newer of the two loads is the one that is shown";
}

TEST_F(TreeCommandsTest, CommandsThatComeWhileTheDialogIsOpenLeaveItsTree) {
    Model().Select("CAT_Beta");
    WithDialog("mnuEditTree", [this](QDialog&) {
        for (const char* name : {"mnuShowInGrid", "mnuDelete", "mnuDeleteContent"}) {
            (void)Form().Parts().Commands.Run(name);
        }
    });
    EXPECT_EQ(Nodes(), (Texts{"Bibliothek", "Alpha (02:10)", "Two.mp3", "One.mp3"}));
}

TEST_F(TreeCommandsTest, AnOrdinaryLoadInsideThatOfGivenFilesIsOrdinary) {
    Model().Select("file1pos1");
    Texts inner;
    AtEachEventPoint([&] {
        Form().Parts().List.LoadDatabase({});
        inner = Listed();
    });
    Action("mnuShowInGrid").trigger();
    services.events = &realEvents;
    EXPECT_GE(points, 2);
    EXPECT_EQ(inner, (Texts{"Abba", "Cure"}));
    EXPECT_EQ(Listed(), Texts{"Cure"}) << "the outer load comes to its end last";
}

TEST_F(TreeCommandsTest, ShowInGridInsideItselfListsItsFiles) {
    Model().Select("file1pos1");
    AtEachEventPoint([&] { Action("mnuShowInGrid").trigger(); });
    Action("mnuShowInGrid").trigger();
    EXPECT_GE(points, 2);
    EXPECT_EQ(Listed(), Texts{"Cure"});
}

TEST_F(TreeCommandsTest, AnExpandedCategoryThatIsRenamedInTheDialogFailsTheTreeAtItsEnd) {
    mainModule.TreeNodeData.Add("CAT_Beta");
    OnceDialogOpens([](QDialog& dialog) {
        auto* field = dialog.findChild<QLineEdit*>(QStringLiteral("txtEdit"));
        field->setText(QStringLiteral("Gamma"));
        QTest::keyClick(field, Qt::Key_Return);
    });
    Model().Select("CAT_Beta");
    EXPECT_THROW((void)Form().Parts().Commands.Run("mnuEditCategory"), RuntimeError);
    EXPECT_EQ(Value("Select Category from Categories where Category_id = 2"), "Gamma");
    EXPECT_EQ(mainModule.TreeNodeData.Keys(), Texts{"CAT_Beta"});
    mainModule.TreeNodeData.Clear();
}

TEST_F(TreeCommandsTest, ACommandInsideItselfActsOnNothingThatIsGone) {
    Model().Select("file1pos1");
    AtEachEventPoint([this] { Action("mnuDelete").trigger(); });
    Action("mnuDelete").trigger();
    EXPECT_GE(points, 2);
    EXPECT_EQ(Value("Select Count(*) from FileCategories"), "1");
    EXPECT_EQ(Nodes(), (Texts{"Bibliothek", "Alpha (01:05)", "Beta", "One.mp3"}));
}

TEST_F(TreeCommandsTest, EachCommandMayComeWhileTheTreeIsBuiltForAnother) {
    for (const char* inner : {"mnuShowInGrid", "mnuDeleteContent", "mnuDelete"}) {
        points = 0;
        Model().Select("CAT_Alpha");
        AtEachEventPoint([&] { Action(inner).trigger(); });
        Form().Tree().LoadTree();
        Action("mnuShowInGrid").trigger();
        services.events = &realEvents;
        EXPECT_GE(points, 2) << inner;
        Form().Tree().LoadTree();
        EXPECT_EQ(Nodes().front(), "Bibliothek") << inner;
    }
    // Nothing is selected while a tree is loaded, so that nothing has been deleted.
    EXPECT_EQ(Value("Select Count(*) from Categories"), "2");
}

TEST_F(TreeCommandsTest, ARunningScanHoldsAllOfThemBack) {
    Model().Select("CAT_Alpha");
    mainModule.ScanRunning = true;
    for (const char* name : {"mnuDelete", "mnuDeleteContent", "mnuEditCategory", "mnuNewCategory",
                             "mnuEditTree", "mnuEditTree2", "mnuShowInGrid"}) {
        Action(name).trigger();
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << name;
    }
    QTest::keyClick(&Tree(), Qt::Key_Delete);
    mainModule.ScanRunning = false;
    EXPECT_EQ(Value("Select Count(*) from Categories"), "2");
    EXPECT_TRUE(msgBox.shown.empty());
    EXPECT_EQ(Listed(), (Texts{"Abba", "Cure"}));
}

} // namespace quavernet::test
