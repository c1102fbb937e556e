#include "core/Json.h"

#include "core/JsonReading.h"
#include "core/JsonWriting.h"

#include <algorithm>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <utility>

namespace orvalen {
namespace {

using Writer = rapidjson::Writer<rapidjson::StringBuffer>;

void writeRow(Writer& writer, const MatchedTrack& row) {
    writer.StartObject();
    writeMember(writer, "id", row.id.toString());
    writeMember(writer, "title", row.title);
    writeMember(writer, "artist", row.artist);
    writeText(writer, "found");
    writer.Bool(row.found);
    writeText(writer, "options");
    writer.StartArray();
    for (const Track& option : row.options)
        writeTrack(writer, option);
    writer.EndArray();
    if (row.selectedTrack) {
        writeText(writer, "selectedTrack");
        writeTrack(writer, *row.selectedTrack);
    }
    writeText(writer, "include");
    writer.Bool(row.include);
    writer.EndObject();
}

/// JSON has slashes only inside strings, so all of them can be escaped afterwards.
std::string withEscapedSlashes(std::string_view json) {
    std::string result;
    result.reserve(json.size() + static_cast<std::size_t>(std::ranges::count(json, '/')));
    for (;;) {
        const std::size_t slash = json.find('/');
        result += json.substr(0, slash);
        if (slash == std::string_view::npos)
            return result;
        result += "\\/";
        json.remove_prefix(slash + 1);
    }
}

UUID readId(const JsonObject& row) {
    const auto id = UUID::parse(row.text("id"));
    if (!id)
        row.fail("\"id\" is not a UUID.");
    return id.value_or(UUID());
}

MatchedTrack readRow(const JsonObject& row) {
    MatchedTrack result;
    result.id = readId(row);
    result.title = row.text("title");
    result.artist = row.text("artist");
    result.found = row.boolean("found");
    row.objects("options",
                [&](const JsonObject& option) { result.options.push_back(readTrack(option).toTrack()); });
    row.optionalObject("selectedTrack",
                       [&](const JsonObject& track) { result.selectedTrack = readTrack(track).toTrack(); });
    result.include = row.boolean("include");
    return result;
}

} // namespace

std::string encodeSession(std::string_view matchInput, std::span<const MatchedTrack> matchedTracks) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartObject();
    writeMember(writer, "matchInput", matchInput);
    writeText(writer, "matchedTracks");
    writer.StartArray();
    for (const MatchedTrack& row : matchedTracks)
        writeRow(writer, row);
    writer.EndArray();
    writer.EndObject();
    return withEscapedSlashes({buffer.GetString(), buffer.GetSize()});
}

Expected<MatchSession> decodeSession(std::string bytes) {
    return readJson(std::move(bytes), [](const JsonObject& root) {
        MatchSession session;
        session.matchInput = root.text("matchInput");
        root.objects("matchedTracks",
                     [&](const JsonObject& row) { session.matchedTracks.push_back(readRow(row)); });
        return session;
    });
}

std::string encodeTexts(const std::vector<std::string>& texts) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.StartArray();
    for (const std::string& text : texts)
        writeText(writer, text);
    writer.EndArray();
    return {buffer.GetString(), buffer.GetSize()};
}

Expected<std::vector<std::string>> decodeTexts(std::string_view bytes) {
    return readJsonTexts(std::string(bytes));
}

} // namespace orvalen
