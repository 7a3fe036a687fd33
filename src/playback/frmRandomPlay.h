// The dialog of the random play: all files or so many. Opened by mnuRandom of the main window.
#pragma once

#include <memory>

#include <QDialog>

namespace Ui {
class frmRandomPlay;
}

namespace quavernet {

class frmRandomPlay : public QDialog {
    Q_OBJECT
public:
    explicit frmRandomPlay(QWidget* owner);
    ~frmRandomPlay() override;

private:
    void LoadStrings();
    void Form_Load();
    void optAllFiles_Click();
    void FileCountChosen();
    void optFileCount_Click();
    void cmdOK_Click();

    std::unique_ptr<Ui::frmRandomPlay> m_ui;
};

} // namespace quavernet
