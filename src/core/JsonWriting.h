#pragma once

#include "core/Track.h"

#include <rapidjson/rapidjson.h>
#include <string_view>

namespace orvalen {

// Helpers for all JSON writers, with compact or indented output. Texts must be valid UTF-8.

template <typename Writer>
void writeText(Writer& writer, std::string_view text) {
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

template <typename Writer>
void writeMember(Writer& writer, std::string_view key, std::string_view text) {
    writeText(writer, key);
    writeText(writer, text);
}

/// Writes the members of a track that all files have in the same form.
template <typename Writer>
void writeTrackTexts(Writer& writer, const TrackView& track) {
    writeMember(writer, "title", track.title);
    writeMember(writer, "artist", track.artist);
    writeMember(writer, "genre", track.genre);
    writeMember(writer, "path", track.path);
}

/// Writes the object that readTrack() reads, without "bpm" if the track has no tempo.
template <typename Writer>
void writeTrack(Writer& writer, const TrackView& track) {
    writer.StartObject();
    writeTrackTexts(writer, track);
    if (track.bpm) {
        writeText(writer, "bpm");
        writer.Int64(*track.bpm);
    }
    writer.EndObject();
}

} // namespace orvalen
