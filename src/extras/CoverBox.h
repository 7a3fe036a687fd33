// The square in which frmCovers shows one image of an album, stretched to its sides. The mouse opens the
// image, drags it out and drops another one on it.
#pragma once

#include <QImage>
#include <QPoint>
#include <QWidget>

#include <functional>
#include <string>

namespace quavernet {

class CoverBox : public QWidget {
    Q_OBJECT
public:
    explicit CoverBox(QWidget* parent = nullptr);

    /// Whether a file that is dragged over the box would be taken; asked at each movement and at the drop.
    std::function<bool()> TakesDrop = [] { return false; };

    void RemovePicture();

    /// Shows a file's picture. It is read when the box is painted first: most boxes lie on hidden pages. What
    /// is no picture changes nothing.
    void ShowPicture(const std::string& path);

    /// Reads it now. False, and nothing changes, if it can't be shown.
    bool LoadPicture(const std::string& path);

    /// What the box shows, in the pixels of its screen; null if it is empty.
    const QImage& Picture() const { return m_picture; }

    QSize sizeHint() const override;

signals:
    void DoubleClicked();
    void DragBegins();
    void FileDropped(const std::string& path);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void ReadPicture(const QSize& size);

    std::string m_path; ///< Of what is to be shown.
    QSize m_readFor;    ///< The size for which the file was read last; empty if it was not.
    QImage m_picture;
    QPoint m_pressed;
    bool m_mayDrag = false; ///< The left button was pressed here, and no drag has begun since.
};

} // namespace quavernet
