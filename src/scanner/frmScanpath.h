// The dialog of the standard scan path. Opened by mnuStandardScanningPath of the main window.
#pragma once

#include <memory>
#include <string>

#include <QDialog>

namespace Ui {
class frmScanpath;
}

namespace quavernet {

class frmScanpath : public QDialog {
    Q_OBJECT
public:
    explicit frmScanpath(QWidget* owner);
    ~frmScanpath() override;

private:
    void LoadStrings();
    void ShowPath(const std::string& path);
    std::string Path() const;
    void cmdBrowse_Click();
    void cmdOK_Click();

    std::unique_ptr<Ui::frmScanpath> m_ui;
    std::string m_path; ///< Bytes of the path last stored or chosen.
};

} // namespace quavernet
