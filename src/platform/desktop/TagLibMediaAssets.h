#pragma once

#include "platform/MediaAsset.h"

namespace orvalen {

/// The tags of mp3, MPEG-4, WAV and AIFF files by TagLib, whatever the files are called. Reads only the tags'
/// small parts: neither pictures nor audio. Each asset reads its file once.
class TagLibMediaAssets : public MediaAssets {
public:
    TagLibMediaAssets();

    std::unique_ptr<MediaAsset> open(const std::string& path) override;
};

} // namespace orvalen
