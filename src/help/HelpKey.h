// F1 on a form: the key is swallowed and the help page of the control, or else of the form, opens. Every form
// makes one of these when all its controls exist.
#pragma once

#include <QObject>

#include <string>

class QWidget;

namespace quavernet {

class HelpKey : public QObject {
    Q_OBJECT
public:
    /// Watches the form and all its controls, also those that are added later. The form's object name finds
    /// its lines in HelpPages. The form owns the object.
    explicit HelpKey(QWidget* form);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Watch(QObject* object);
    void Press(const QObject* watched) const;
    void Release(const QObject* watched) const;

    std::string m_form;
};

} // namespace quavernet
