// The help window: contents and search on the left, the page on the right. One window serves all forms, also
// while one of them is modal; a page asked for from outside replaces the one that is shown.
#pragma once

#include "help/HelpSet.h"

#include <QListWidget>
#include <QTreeWidgetItem>
#include <QWidget>

#include <memory>
#include <string>

namespace Ui {
class frmHelp;
}

namespace quavernet {

class frmHelp : public QWidget {
    Q_OBJECT
public:
    frmHelp();
    ~frmHelp() override;

    /// Brings the window up on a page of a help file; an empty page is the contents.
    void ShowPage(const std::string& file, const std::string& page);

    /// The window's own texts in the current language.
    void LoadStrings();

protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Wire();
    void OpenSet(const std::string& file);
    void FollowLanguage();
    void ComeUp();
    void PageShown(const QUrl& place);
    void SearchAllPages(const QString& text);
    void OpenResult(const QListWidgetItem* item);
    void OpenEntry(const QTreeWidgetItem* item);
    void FindInPage(bool backwards);
    bool ZoomByKey(const QKeyEvent& event);

    std::unique_ptr<Ui::frmHelp> m_ui;
    std::string m_file; ///< The help file that is open.
    HelpSet m_set;
};

} // namespace quavernet
