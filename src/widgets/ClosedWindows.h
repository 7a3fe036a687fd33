// Windows that were closed while the program goes on without them. Whoever closes one leaves it here until it
// can be deleted.
#pragma once

#include <QObject>
#include <QWidget>

#include <memory>
#include <vector>

namespace quavernet {

/// A handler of a window may be running further up when the window closes: handlers let events run. It is
/// deleted when the program next waits for its user outside of every handler, or with this object.
class ClosedWindows : public QObject {
    Q_OBJECT
public:
    ClosedWindows();
    ~ClosedWindows() override;

    void Add(std::unique_ptr<QWidget> window);
    std::size_t Count() const { return m_windows.size(); }

private:
    std::vector<std::unique_ptr<QWidget>> m_windows;
};

} // namespace quavernet
