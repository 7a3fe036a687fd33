// The tag component of files without a version 2 tag.
#pragma once

#include "platform/TagComponent.h"

#include <string>

namespace quavernet::test {

class NoTags : public TagComponent {
public:
    void LoadFile(const std::string&) override {}
    bool HasV2Tag() const override { return false; }
    std::string TagField(int) const override { return {}; }
    void SetTagField(int, const std::string&) override {}
    void SaveFile(const std::string&) override {}
};

} // namespace quavernet::test
