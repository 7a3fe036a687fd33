// A drag with the mouse out of one of the program's controls, with the program's own pointer. List and tree
// begin theirs here.
#pragma once

class QMimeData;
class QWidget;

namespace quavernet {

/// Runs the drag to its end: it offers a copy and nothing else. Takes the data over. Lets events run.
void DragFiles(QWidget& source, QMimeData* data);

} // namespace quavernet
