#include "library/LibraryDocument.h"

#include "core/AllTracks.h"
#include "core/JsonReading.h"
#include "core/JsonWriting.h"
#include "core/LibraryIndexBuilder.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <utility>

namespace orvalen {
namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void writeTracks(Writer& writer, const LibraryIndex& index) {
    writer.StartArray();
    for (const TrackView& track : allTracks(index))
        writeTrack(writer, track);
    writer.EndArray();
}

/// In backups, every track has a tempo.
void writeSnapshotTrack(Writer& writer, const TrackView& track) {
    writer.StartObject();
    writeTrackTexts(writer, track);
    writeText(writer, "bpm");
    writer.Int64(track.bpm.value_or(0));
    writer.EndObject();
}

void writePreferred(Writer& writer, const PreferredMatches& preferred) {
    writer.StartArray();
    for (const auto& [key, path] : preferred) {
        writer.StartObject();
        writeMember(writer, "key", key);
        writeMember(writer, "path", path);
        writer.EndObject();
    }
    writer.EndArray();
}

void writeFolders(Writer& writer, const std::vector<Location>& folders) {
    writer.StartArray();
    for (const Location& folder : folders)
        writeText(writer, folder.path);
    writer.EndArray();
}

LibraryIndex readTracks(const JsonObject& document) {
    LibraryIndexBuilder builder;
    document.objects("tracks", [&](const JsonObject& track) { builder.fileTrack(readTrack(track)); });
    return builder.finish();
}

/// Returns nullopt if the member is missing or is not an array of objects that contain only strings.
std::optional<PreferredMatches> readPreferred(const JsonObject& document) {
    PreferredMatches matches;
    const auto readEntry = [&matches](const JsonObject& entry) {
        entry.requireTextsOnly();
        const auto key = entry.optionalText("key");
        const auto path = entry.optionalText("path");
        if (key && path)
            matches.insert_or_assign(composed(*key), std::string(*path));
    };
    const bool isUsable =
        document.readPart([&](const JsonObject& part) { part.objects("preferred", readEntry); });
    return isUsable ? std::optional(std::move(matches)) : std::nullopt;
}

std::vector<Location> readFolders(const JsonObject& document) {
    std::vector<Location> folders;
    const bool isUsable = document.readPart([&](const JsonObject& part) {
        part.texts("folders", [&](std::string_view path) { folders.push_back(locationOf(path)); });
    });
    return isUsable ? folders : std::vector<Location>();
}

} // namespace

void writeLibraryDocument(const LibraryIndex& index, const std::optional<PreferredMatches>& preferred,
                          const std::vector<Location>& folders,
                          const std::function<void(std::string_view)>& use) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.SetIndent(' ', 2);
    writer.StartObject();
    writeText(writer, "tracks");
    writeTracks(writer, index);
    if (preferred) {
        writeText(writer, "preferred");
        writePreferred(writer, *preferred);
    }
    writeText(writer, "folders");
    writeFolders(writer, folders);
    writer.EndObject();
    use({buffer.GetString(), buffer.GetSize()});
}

std::optional<LibraryDocument> readLibraryDocument(std::string bytes) {
    auto document = readJson(std::move(bytes), [](const JsonObject& root) {
        return LibraryDocument{readTracks(root), readPreferred(root), readFolders(root)};
    });
    return document ? std::optional(*std::move(document)) : std::nullopt;
}

std::string preferredMatchesText(const PreferredMatches& preferred) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.SetIndent(' ', 2);
    writer.StartObject();
    writeText(writer, "preferred");
    writePreferred(writer, preferred);
    writer.EndObject();
    return {buffer.GetString(), buffer.GetSize()};
}

std::optional<PreferredMatches> readPreferredMatches(std::string bytes) {
    auto preferred = readJson(std::move(bytes), readPreferred);
    return preferred ? *std::move(preferred) : std::nullopt;
}

void writeLibrarySnapshot(const LibraryIndex& index, const PreferredMatches& preferred,
                          const std::function<void(std::string_view)>& use) {
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
    use({buffer.GetString(), buffer.GetSize()});
}

} // namespace orvalen
