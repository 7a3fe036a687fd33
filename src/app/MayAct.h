// The one question before anything acts: is something under way in which nothing else may? Asked by the
// commands, by what views do without one, by drops, by the reminder and by the closing of the main window.
#pragma once

#include "app/MainModule.h"

namespace quavernet {

/// False while a scan runs, or a command that acts alone: events run inside both, and nothing but "cancel"
/// acts in them.
inline bool MayAct() {
    return !mainModule.ScanRunning && !mainModule.ActsAlone;
}

/// As MayAct, for what acts on nodes of the tree: those of a tree that is being loaded again are old ones.
inline bool MayActOnTree() {
    return MayAct() && !mainModule.TreeLoading;
}

} // namespace quavernet
