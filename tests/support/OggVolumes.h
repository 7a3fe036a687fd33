// The real file system with the facts of single files changed at a test's choice: what the Ogg pass asks for.
#pragma once

#include "app/MainModule.h"
#include "support/ScanDoubles.h"

namespace quavernet::test {

class OggVolumes : public ChosenVolumes {
public:
    FileFacts GetFile(const std::string& path) override {
        FileFacts facts = ChosenVolumes::GetFile(path);
        if (onFile) {
            onFile(facts);
        }
        return facts;
    }
};

} // namespace quavernet::test
