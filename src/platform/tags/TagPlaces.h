#pragma once

#include "platform/tags/ByteSource.h"

#include <optional>

namespace orvalen {

/// Where the tags of an audio file stand. What a file holds is told by its content, never by its name.
struct TagPlaces {
    std::optional<std::uint64_t> id3;  ///< where an ID3v2 tag begins; how far it goes it says itself
    std::optional<ByteRange> itemList; ///< of MPEG-4: the content of its item list
    std::optional<ByteRange> info;     ///< of WAV: an INFO list, from that word on
    std::optional<ByteRange> name;     ///< of AIFF: the text of the name chunk
    std::optional<ByteRange> author;   ///< of AIFF: the text of the author chunk
    bool mpeg4 = false;
    bool mayHaveEndTags = false; ///< of MPEG audio: tags of the old kinds may stand at the end
};

/// An error when the bytes are no audio of a kind that we know: MPEG audio, MPEG-4, WAV or AIFF.
Expected<TagPlaces> findTags(const ByteSource& file);

// The finders behind it, each for its own container.

Expected<TagPlaces> findMpegTags(const ByteSource& file);
Expected<TagPlaces> findMpeg4Tags(const ByteSource& file);
TagPlaces findWavTags(const ByteSource& file);
TagPlaces findAiffTags(const ByteSource& file);

/// The old tags behind MPEG audio: 128 bytes of ID3v1, and an APE tag with its footer, before those or last.
struct EndTags {
    std::optional<ByteRange> ape;
    std::optional<ByteRange> id3v1;
};
EndTags findEndTags(const ByteSource& file);

} // namespace orvalen
