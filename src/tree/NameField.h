// txtEdit of frmEditTree: a field that takes the characters of NameFilter only, whatever way they come in.
#pragma once

#include <QLineEdit>

namespace quavernet {

class NameField : public QLineEdit {
    Q_OBJECT
public:
    explicit NameField(QWidget* parent);

    /// Shows a name as it is: one that came from elsewhere may hold what nobody can type here.
    void ShowName(const QString& name);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    QString m_shown; ///< The text before the change that is being looked at.
};

} // namespace quavernet
