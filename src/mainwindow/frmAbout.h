// The about box. Opened modal over the main window by mnuAbout.
#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmAbout;
}

namespace quavernet {

class frmAbout : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* owner);
    ~frmAbout() override;

private:
    void StartSysInfo();

    std::unique_ptr<Ui::frmAbout> m_ui;
};

} // namespace quavernet
