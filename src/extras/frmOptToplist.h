// The dialog of the charts' length and of what they count. Opened by mnuToplists of the main window.
#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmOptToplist;
}

namespace quavernet {

class frmOptToplist : public QDialog {
    Q_OBJECT
public:
    explicit frmOptToplist(QWidget* owner);
    ~frmOptToplist() override;

protected:
    bool event(QEvent* event) override;

private:
    void LoadStrings();
    void Form_Activate();
    void cmdOK_Click();

    std::unique_ptr<Ui::frmOptToplist> m_ui;
};

} // namespace quavernet
