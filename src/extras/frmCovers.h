// The window of the cover images: the library's albums on the left, one page for each image on the right.
// CoversHost makes one when it is wanted and forgets it when it has closed.
#pragma once

#include "extras/Covers.h"

#include <QAbstractListModel>
#include <QDialog>
#include <QPointer>

#include <array>
#include <functional>
#include <memory>
#include <string>

class QLabel;
class QPushButton;

namespace Ui {
class frmCovers;
}

namespace quavernet {

class CoverBox;

/// The entries of lstAlbums.
class AlbumList : public QAbstractListModel {
    Q_OBJECT
public:
    explicit AlbumList(const Covers& covers) : m_covers(covers) {}

    /// Reads the entries with `load` and shows them.
    void Reset(const std::function<void()>& load);

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

private:
    const Covers& m_covers;
};

class frmCovers : public QDialog, private CoverView {
    Q_OBJECT
public:
    explicit frmCovers(QWidget* owner);
    ~frmCovers() override;

    /// Fills the list, before the window is shown. Throws RuntimeError if a statement fails.
    void Form_Load();

    /// All texts of the window in the current language.
    void LoadStrings();

    /// Selects the album of a key, or the first one if the list does not have it. Throws RuntimeError if a
    /// statement fails.
    void SelectAlbum(const std::string& key);

    /// The window acts beside a modal dialog, out of which it was shown, until that closes.
    void ActBeside(QWidget* dialog);

    bool eventFilter(QObject* watched, QEvent* event) override;

signals:
    void Closed(); ///< Form_Unload is through.

protected:
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void reject() override;

private:
    /// The controls of one page.
    struct Page {
        CoverBox* Image;
        QPushButton* Browse;
        QPushButton* OnlineSearch;
        QPushButton* Delete;
    };

    void RemovePictures() override;
    void ShowPicture(CoverPage page, const std::string& path) override;
    bool LoadPicture(CoverPage page, const std::string& path) override;
    void SetPanel(const std::string& path) override;
    void SetMousePointer(MousePointer pointer) override;

    void ConnectPage(CoverPage page);
    void FitContents();
    void PlaceControls();
    void lstAlbums_Click();
    void DragCover(CoverBox& source);
    bool MayAct() const;
    bool MayTakeDrop() const;
    void Act(const std::function<void()>& handler);
    CoverBox& Box(CoverPage page) { return *m_pages[static_cast<std::size_t>(page)].Image; }

    std::unique_ptr<Ui::frmCovers> m_ui;
    std::array<Page, CoverPageCount> m_pages;
    QLabel* m_panel;
    Covers m_covers{*this};
    AlbumList m_albums{m_covers};
    int m_shown = -1;           ///< Row of the list whose covers are shown.
    QPointer<QWidget> m_beside; ///< See ActBeside.
    bool m_open = false;        ///< Loaded and not yet closed.
    bool m_acting = false;      ///< A handler that lets events run has not returned.
};

} // namespace quavernet
