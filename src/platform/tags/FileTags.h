#pragma once

#include "platform/MediaAsset.h"
#include "platform/tags/ByteSource.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

/// Title, artist and tempo from the tags of one file. If several tags have an item, the item to use is first.
struct FileTags {
    std::vector<MetadataItem> common;
    std::vector<std::string> formats;
    std::vector<MetadataItem> id3;

    bool hasTitleAndArtist() const;
    /// Adds a common item unless the text is empty. For tags in which an empty field means a missing one.
    void addUnlessEmpty(std::string commonKey, std::string text);
};

/// Detects the container from the content, not the file name, and reads its tags. Does not read pictures or
/// audio. Fails if the bytes are not audio of a known kind.
Expected<FileTags> readTags(const ByteSource& file);

// Readers for one container. The file must be of this container.

Expected<FileTags> readMpegTags(const ByteSource& file);
Expected<FileTags> readMpeg4Tags(const ByteSource& file);
Expected<FileTags> readWavTags(const ByteSource& file);
Expected<FileTags> readAiffTags(const ByteSource& file);

} // namespace orvalen
