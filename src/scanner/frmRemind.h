// The dialog of the scan reminder: on or off, and how often. Opened by mnuRemind of the main window.
#pragma once

#include <memory>

#include <QDialog>

namespace Ui {
class frmRemind;
}

namespace quavernet {

class frmRemind : public QDialog {
    Q_OBJECT
public:
    /// Shows what the library holds. Throws RuntimeError if it can't be read.
    explicit frmRemind(QWidget* owner);
    ~frmRemind() override;

private:
    void LoadStrings();
    void cmdOK_Click();

    std::unique_ptr<Ui::frmRemind> m_ui;
};

} // namespace quavernet
