#pragma once

#include "platform/MediaAsset.h"

namespace orvalen {

/// Reads title and artist of mp3, MPEG-4, WAV and AIFF files, and the tempo from ID3 tags. Each asset reads
/// its file once.
class FileMediaAssets : public MediaAssets {
public:
    std::unique_ptr<MediaAsset> open(const std::string& path) override;
    std::unique_ptr<MediaReadAhead> startReadAhead() override;
};

} // namespace orvalen
