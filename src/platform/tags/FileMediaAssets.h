#pragma once

#include "platform/MediaAsset.h"

namespace orvalen {

/// Title, artist and tempo of mp3, MPEG-4, WAV and AIFF files; no other tags. Each asset reads its file once.
class FileMediaAssets : public MediaAssets {
public:
    std::unique_ptr<MediaAsset> open(const std::string& path) override;
    std::unique_ptr<MediaReadAhead> startReadAhead() override;
};

} // namespace orvalen
