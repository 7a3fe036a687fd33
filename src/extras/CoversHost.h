// The window of the covers as the rest of the program reaches it: made when it is first wanted, forgotten
// when it has closed. The main window's parts own it; the command of the menu and the details come here.
#pragma once

#include "widgets/ClosedWindows.h"

#include <QObject>

#include <memory>
#include <string>

class QWidget;

namespace quavernet {

class frmCovers;

class CoversHost : public QObject {
    Q_OBJECT
public:
    /// The window stays over `owner` and closes with it.
    explicit CoversHost(QWidget& owner);
    ~CoversHost() override;

    /// Shows the window, not modal. One that is open comes to the front as it is. Throws RuntimeError if a
    /// statement fails.
    void Show();

    /// The same, then selects the album of a key. Lets events run. Throws RuntimeError if a statement fails.
    void ShowAlbum(const std::string& key);

    void LoadStrings(); ///< Nothing while no window is open.

    /// The open window, or null.
    frmCovers* Form() const { return m_form.get(); }

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Forget();

    QWidget& m_owner;
    ClosedWindows m_closed;
    std::unique_ptr<frmCovers> m_form;
};

} // namespace quavernet
