#pragma once

#include "platform/MediaAsset.h"

namespace orvalen {

/// Title, artist and tempo of mp3, MPEG-4, WAV and AIFF files by TagLib, whatever the files are called; no
/// other items are given. Reads only the small parts of the tags that hold them: neither pictures nor audio.
/// Each asset reads its file once.
class TagLibMediaAssets : public MediaAssets {
public:
    TagLibMediaAssets();

    std::unique_ptr<MediaAsset> open(const std::string& path) override;
};

} // namespace orvalen
