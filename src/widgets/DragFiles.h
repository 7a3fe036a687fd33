// A drag with the mouse out of one of the program's controls, with the program's own pointer, and the answer
// to a drag over one of them. List and tree begin theirs here; both and the player answer here.
#pragma once

#include <string_view>

class QDropEvent;
class QMimeData;
class QWidget;

namespace quavernet {

/// Runs the drag to its end: it offers a copy and nothing else. Takes the data over. `picture` is the key of
/// the pointer's picture. Lets events run.
void DragFiles(QWidget& source, QMimeData* data, std::string_view picture = "drag");

/// False while nothing may act, or a box is open.
bool MayTakeDrop();

/// Answers a drag over a control, or the drop on it, and tells the answer: a copy is taken if the control
/// takes what is dragged, the source offers one, and MayTakeDrop allows it. A source that offers a move alone
/// would delete the user's files.
bool AnswerDrag(QDropEvent& event, bool takes);

/// The same for a control that asks by itself whether anything may act.
bool AnswerDragIf(QDropEvent& event, bool takes);

} // namespace quavernet
