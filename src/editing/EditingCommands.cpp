#include "editing/EditingCommands.h"

#include "app/CommandRegistry.h"

namespace quavernet {

void RegisterEditingCommands(CommandRegistry& /*commands*/, const EditingParts& /*parts*/,
                             QWidget& /*owner*/) {}

} // namespace quavernet
