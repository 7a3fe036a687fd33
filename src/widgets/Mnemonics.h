// Letters by which the keyboard reaches the controls of a dialog. Called by the forms whenever they have set
// their texts.
#pragma once

class QWidget;

namespace quavernet {

/// Marks a letter in each caption of the window: of its buttons, of its tabs, and of labels that lead to a
/// control. No two captions have the same letter; those that read alike share theirs, since they are on
/// different pages.
void MarkMnemonics(QWidget& window);

} // namespace quavernet
