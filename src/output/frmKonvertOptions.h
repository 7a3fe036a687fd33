// The options of the encoding of WAV files. Opened by mnuKonvertoptions of the main window, and before each
// conversion if the user wants that.
#pragma once

#include <memory>
#include <string>

#include <QDialog>

namespace Ui {
class frmKonvertOptions;
}

namespace quavernet {

class frmKonvertOptions : public QDialog {
    Q_OBJECT
public:
    /// Throws SettingError for a check box whose stored text is no number.
    explicit frmKonvertOptions(QWidget* owner);
    ~frmKonvertOptions() override;

    /// Every way out stores the options: there is no cancel.
    void done(int result) override;

private:
    void LoadStrings();
    void Form_Load();
    void Form_Unload();
    void cmdBrowse_Click();
    void ShowTarget(const std::string& path);
    std::string Target() const;

    std::unique_ptr<Ui::frmKonvertOptions> m_ui;
    std::string m_target;  ///< Bytes of the path last stored or chosen.
    QString m_shownTarget; ///< How the box shows them.
};

} // namespace quavernet
