// The dialog that changes the name of one file. Opened by the list's commands while one row is selected, or
// none.
#pragma once

#include "editing/FileNameEditor.h"

#include <memory>

#include <QDialog>

namespace Ui {
class frmFileName;
}

namespace quavernet {

class LongWork;

class frmFileName : public QDialog {
    Q_OBJECT
public:
    frmFileName(QWidget* owner, LongWork& work);
    ~frmFileName() override;

private:
    void LoadStrings();
    void ConnectControls();
    void cmsSave_Click();

    std::unique_ptr<Ui::frmFileName> m_ui;
    FileNameEditor m_editor;
    LongWork& m_work;
};

} // namespace quavernet
