#include "library/LibraryDocument.h"

#include "core/JsonReading.h"
#include "core/JsonWriting.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <utility>

namespace orvalen {
namespace {

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void writeTracks(Writer& writer, const LibraryIndex& index) {
    writer.StartArray();
    for (std::size_t position = 0; position < index.trackCount(); ++position)
        writeTrack(writer, index.track(position));
    writer.EndArray();
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

std::optional<LibraryIndex> decodeTracks(const simdjson::dom::object& document) {
    const auto tracks = requiredArray(document, "tracks");
    if (!tracks)
        return std::nullopt;
    LibraryIndexBuilder builder;
    for (const simdjson::dom::element element : *tracks) {
        const auto track = decodeTrack(element);
        if (!track)
            return std::nullopt;
        builder.fileTrack(*track);
    }
    return builder.finish();
}

/// Nothing when the member is missing or is not an array of objects with nothing but texts.
std::optional<PreferredMatches> decodePreferred(const simdjson::dom::object& document) {
    const auto entries = requiredArray(document, "preferred");
    if (!entries)
        return std::nullopt;
    PreferredMatches matches;
    for (const simdjson::dom::element element : *entries) {
        simdjson::dom::object entry;
        if (element.get(entry))
            return std::nullopt;
        for (const auto member : entry)
            if (!member.value.is_string())
                return std::nullopt;
        const auto key = requiredText(entry, "key");
        const auto path = requiredText(entry, "path");
        if (key && path)
            matches.insert_or_assign(composed(*key), std::string(*path));
    }
    return matches;
}

std::vector<Location> decodeFolders(const simdjson::dom::object& document) {
    const auto paths = requiredArray(document, "folders");
    if (!paths)
        return {};
    std::vector<Location> folders;
    for (const simdjson::dom::element element : *paths) {
        std::string_view path;
        if (element.get(path))
            return {};
        folders.push_back(locationOf(path));
    }
    return folders;
}

} // namespace

void useLibraryDocumentText(const LibraryIndex& index, const std::optional<PreferredMatches>& preferred,
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
    simdjson::dom::parser parser;
    const auto root = parseLongObject(parser, std::move(bytes));
    if (!root)
        return std::nullopt;
    auto index = decodeTracks(*root);
    if (!index)
        return std::nullopt;
    return LibraryDocument{std::move(*index), decodePreferred(*root), decodeFolders(*root)};
}

} // namespace orvalen
