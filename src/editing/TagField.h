// A text box of the details dialog: read-only in the colour of buttons, or open for typing in the colour of
// text fields. Its form hands it the texts of tags, of any length and in any bytes.
#pragma once

#include <QLineEdit>

#include <string>

namespace quavernet {

class TagField : public QLineEdit {
    Q_OBJECT
public:
    /// Read-only at first.
    explicit TagField(QWidget* parent = nullptr);

    void ShowText(const std::string& text);

    /// What was shown last, to the byte, until the user changes it: a line shows neither the end of a very
    /// long text nor bytes that are not UTF-8.
    std::string Text() const;

    void SetEditable(bool editable);

protected:
    void changeEvent(QEvent* event) override;

private:
    void TakeColors();

    std::string m_shown;
    bool m_takingColors = false;
};

} // namespace quavernet
