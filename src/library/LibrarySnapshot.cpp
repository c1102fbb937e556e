#include "library/LibrarySnapshot.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

namespace orvalen {
namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void writeText(Writer& writer, std::string_view text) {
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void writeTrack(Writer& writer, const TrackView& track) {
    writer.StartObject();
    for (const auto& [key, text] : {std::pair("title", track.title), std::pair("artist", track.artist),
                                    std::pair("genre", track.genre), std::pair("path", track.path)}) {
        writer.Key(key);
        writeText(writer, text);
    }
    writer.Key("bpm");
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
    for (std::size_t position = 0; position < index.trackCount(); ++position)
        writeTrack(writer, index.track(position));
    writer.EndArray();
    writer.Key("preferred");
    writer.StartObject();
    for (const auto& [key, path] : preferred) {
        writeText(writer, key);
        writeText(writer, path);
    }
    writer.EndObject();
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

} // namespace orvalen
