// The tag component on TagLib.
#pragma once

#include "platform/TagComponent.h"

#include <memory>

namespace quavernet {

std::unique_ptr<TagComponent> CreateTagLibComponent();

} // namespace quavernet
