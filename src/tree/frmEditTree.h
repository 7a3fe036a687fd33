// The dialog that makes, renames and deletes categories. Opened by the tree's menu and by the main menu;
// whoever opens it loads the tree when it has closed.
#pragma once

#include "tree/CategoryEditor.h"

#include <memory>
#include <string>

#include <QDialog>

namespace Ui {
class frmEditTree;
}

namespace quavernet {

class frmEditTree : public QDialog {
    Q_OBJECT
public:
    /// Shows what the library holds. Throws RuntimeError if it can't be read.
    explicit frmEditTree(QWidget* owner);
    ~frmEditTree() override;

    void cmdNew_Click();
    void EditCategory(const std::string& name); ///< As a click on cmdEdit with this category selected.

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void changeEvent(QEvent* event) override;

private:
    void LoadStrings();
    void ConnectControls();
    void ShowState();
    void ShowText();
    void FillList();
    void BeginEditing();
    bool SelectsFirst(const QEvent& event) const;
    void cmdEdit_Click();
    void cmdSave_Click();
    void cmdDelete_Click();
    void ListClick();

    std::unique_ptr<Ui::frmEditTree> m_ui;
    CategoryEditor m_editor;
    bool m_showing = false; ///< Changes of the controls are the program's own.
};

} // namespace quavernet
