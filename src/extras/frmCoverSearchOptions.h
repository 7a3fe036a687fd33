// The dialog of the online cover search's address. Opened by mnuCoverOnlineSearch of the main window.
#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmCoverSearchOptions;
}

namespace quavernet {

class frmCoverSearchOptions : public QDialog {
    Q_OBJECT
public:
    explicit frmCoverSearchOptions(QWidget* owner);
    ~frmCoverSearchOptions() override;

private:
    void LoadStrings();
    void cmdOK_Click();

    std::unique_ptr<Ui::frmCoverSearchOptions> m_ui;
};

} // namespace quavernet
