// The dialog that asks for the name of a category to be made of a list of files. Opened by the player with
// its queue.
#pragma once

#include "tree/CategoryName.h"

#include <memory>
#include <string>
#include <vector>

#include <QDialog>

namespace Ui {
class frmCategoryName;
}

namespace quavernet {

class frmCategoryName : public QDialog {
    Q_OBJECT
public:
    /// `files`: paths in the order that the entries are to have.
    frmCategoryName(QWidget* owner, std::vector<std::string> files, LibraryViews& views);
    ~frmCategoryName() override;

private:
    void LoadStrings();
    CategoryFinish cmdFinish_Click();
    void EnterPressed();

    std::unique_ptr<Ui::frmCategoryName> m_ui;
    std::vector<std::string> m_files;
    LibraryViews& m_views;
};

} // namespace quavernet
