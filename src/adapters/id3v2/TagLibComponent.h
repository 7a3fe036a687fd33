// The ID3v2 component. It takes tags apart and puts them together itself, so that all else in them keeps its
// bytes; TagLib unpacks the contents of frames and decodes their texts, nothing more. Made by RealServices.
#pragma once

#include "platform/TagComponent.h"
#include "platform/UserFiles.h"

#include <memory>

namespace quavernet {

/// Opens its files through `files`, which must outlive it.
std::unique_ptr<TagComponent> CreateTagLibComponent(UserFiles& files);

} // namespace quavernet
