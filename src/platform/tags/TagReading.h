#pragma once

#include "platform/MediaAsset.h"
#include "platform/tags/TagPlaces.h"

#include <string>
#include <vector>

namespace orvalen {

/// The tags of one file, as TagLib reads them.
struct FileTags {
    std::vector<MetadataItem> common;
    std::vector<std::string> formats;
    std::vector<MetadataItem> id3;
};

/// Reads what stands at the places: the container's own tag first, the kinds of lesser standing behind it.
FileTags readTags(const ByteSource& file, const TagPlaces& places);

} // namespace orvalen
