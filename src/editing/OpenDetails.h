// Opens the details dialog for the current row of the list. The commands of the list do that.
#pragma once

#include "editing/frmDetails.h"

namespace quavernet {

/// Nothing happens without a current row; a file that is not there is told in a box. Lets events run until
/// the dialog closes.
void OpenDetails(const EditingParts& parts, QWidget& owner);

/// As OpenDetails, for the main menu: the press that opens the context menu has noted the row already.
void mnuDetails_Click(const EditingParts& parts, QWidget& owner);

} // namespace quavernet
