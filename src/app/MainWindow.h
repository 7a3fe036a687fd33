// The main window as the player sees it. The program's windows implement it; it lies here so that the player
// reaches a window that lies above it, and that may be closed while the player goes on.
#pragma once

namespace quavernet {

class LibraryViews;

class MainWindow {
public:
    virtual ~MainWindow() = default;

    /// Shows the window above the others with the keyboard in it; builds it again if it was closed. Its
    /// list and tree are then empty.
    virtual void BringToFront() = 0;

    /// The list has its header row and nothing else.
    virtual bool ListIsEmpty() const = 0;

    /// List and tree. While the window is closed there is nothing to load, and a load does nothing.
    virtual LibraryViews& Views() = 0;

    /// As a click on the window's close box. Lets events run.
    virtual void Close() = 0;
};

} // namespace quavernet
