// The repair step of every start: a tree node's key is made of its category's name, so doubled names must go.
#pragma once

#include "app/LongWork.h"

namespace quavernet {

/// Removes from each doubled category name the row with the highest key, and that row's entries. A name that
/// is there three times keeps two rows until the next start. Lets events run before it reads and before it
/// writes.
void CheckDatabase(LongWork& work);

} // namespace quavernet
