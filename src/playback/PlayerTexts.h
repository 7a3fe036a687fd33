// What the player's controls look like and say: texts in the current language and names for screen readers.
// frmPlayer calls it.
#pragma once

class QMenu;

namespace Ui {
class frmPlayer;
}

namespace quavernet {

/// Fonts, and sizes that follow from them.
void DressPlayer(Ui::frmPlayer& ui);

/// `add`: the pop-up menu mnuAdd.
void LoadPlayerStrings(Ui::frmPlayer& ui, QMenu& add);

} // namespace quavernet
