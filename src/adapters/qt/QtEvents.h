// DoEvents on Qt's event loop, cheap enough to be called for every file of a scan.
#pragma once

#include "platform/Services.h"

#include <QElapsedTimer>

namespace quavernet {

class QtEvents : public Events {
public:
    /// Runs what is pending, unless less than 5 ms have passed since the last run: then it returns at once.
    void DoEvents() override;

private:
    QElapsedTimer m_sinceLast;
};

} // namespace quavernet
