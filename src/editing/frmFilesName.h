// The dialog that changes the names of several files. Opened by the list's commands while more than one row
// is selected.
#pragma once

#include "editing/FileNamesEditor.h"

#include <memory>

#include <QDialog>

namespace Ui {
class frmFilesName;
}

namespace quavernet {

class frmFilesName : public QDialog {
    Q_OBJECT
public:
    frmFilesName(QWidget* owner, LongWork& work);
    ~frmFilesName() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void LoadStrings();
    void ConnectControls();
    void FillList();
    void ShowName(int index);
    void ListClick();
    void cmdChangeName_Click();

    std::unique_ptr<Ui::frmFilesName> m_ui;
    LongWork& m_work;
    FileNamesEditor m_editor;
};

} // namespace quavernet
