// The ID3v2 component: takes tags apart and puts them together itself, and reads the contents of their frames
// with TagLib, which would save them less faithfully. Made by RealServices.
#pragma once

#include "platform/TagComponent.h"
#include "platform/UserFiles.h"

#include <memory>

namespace quavernet {

/// Opens its files through `files`, which must outlive it.
std::unique_ptr<TagComponent> CreateTagLibComponent(UserFiles& files);

} // namespace quavernet
