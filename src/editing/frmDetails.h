// The dialog that shows all that is known of one file and lets the user edit its tag. Opened by OpenDetails,
// for the list's current row.
#pragma once

#include "editing/EditingParts.h"
#include "editing/FileDetails.h"

#include <QDialog>

#include <functional>
#include <memory>

namespace Ui {
class frmDetails;
}

namespace quavernet {

class TagField;

class frmDetails : public QDialog {
    Q_OBJECT
public:
    /// Shows the file of the list's current row. Throws RuntimeError 53 if it is missing, others if a
    /// statement fails. Lets events run.
    frmDetails(EditingParts parts, QWidget* owner);
    ~frmDetails() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    enum class EditMode { View = 1, Edit = 2 };

    void LoadStrings();
    void ConnectControls();
    void LoadDetails();
    void ShowDetails();
    void SetEditMode(EditMode mode);
    void ShowGenreBox(bool shown);
    void FillDetailsGenres();
    void OptionChosen(bool id3v1);
    void cmdEdit_Click();
    void cmdCancel_Click();
    void cmdSave_Click();
    void Save();
    void cmdPlay_Click();
    void lblCover_Click();
    bool DragPath(const QEvent& event);
    bool IsEditing() const;
    void OneAtATime(const std::function<void()>& handler);

    EditingParts m_parts;
    std::unique_ptr<Ui::frmDetails> m_ui;
    DetailsFile m_file;
    FileDetails m_shown;
    QPoint m_pressed;       ///< Where the path was pressed.
    bool m_acting = false;  ///< A handler that lets events run has not returned.
    bool m_showing = false; ///< Changes of the controls are the program's own.
};

} // namespace quavernet
