#include "library/LibrarySnapshot.h"

#include "core/AllTracks.h"
#include "core/JsonWriting.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

namespace orvalen {
namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

/// Unlike elsewhere, every track has a tempo here.
void writeSnapshotTrack(Writer& writer, const TrackView& track) {
    writer.StartObject();
    writeTrackTexts(writer, track);
    writeText(writer, "bpm");
    writer.Int64(track.bpm.value_or(0));
    writer.EndObject();
}

} // namespace

std::string librarySnapshotText(const LibraryIndex& index, const PreferredMatches& preferred) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.SetIndent(' ', 2);
    writer.StartObject();
    writer.Key("tracks");
    writer.StartArray();
    for (const TrackView& track : allTracks(index))
        writeSnapshotTrack(writer, track);
    writer.EndArray();
    writer.Key("preferred");
    writer.StartObject();
    for (const auto& [key, path] : preferred)
        writeMember(writer, key, path);
    writer.EndObject();
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

} // namespace orvalen
