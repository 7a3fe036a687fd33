// A slow second reading of MPEG stream facts, step by step on strings, to compare the real one with. It
// shares no code and no table with it.
#pragma once

#include "app/CurrentFile.h"

#include <string>
#include <vector>

namespace quavernet::test {

class AudioInfoModel {
public:
    AudioInfo ReadAudioInfo(const std::string& path, const std::string& file);
    std::string ReadMpegHeader(const std::string& file);

    bool isVbr = false;
    double vbrFrames = 0;

private:
    double FallbackBitRate(const std::string& file) const;
};

} // namespace quavernet::test
