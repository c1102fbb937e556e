#include "core/Json.h"

#include "core/JsonReading.h"
#include "core/JsonWriting.h"

#include <algorithm>
#include <cmath>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>
#include <utility>

namespace orvalen {
namespace {

using simdjson::dom::element;
using simdjson::dom::object;
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

/// A slash occurs in JSON only inside strings, so every one of them may be escaped after the fact.
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

tl::unexpected<Error> wrongKind(std::string_view key, std::string_view kind) {
    std::string description(1, '"');
    description.append(key).append("\" is missing or is not ").append(kind).append(".");
    return failure(std::move(description));
}

/// Takes members one after another and keeps the first error.
class Members {
public:
    template <typename T>
    T take(Expected<T> member) {
        if (member)
            return std::move(*member);
        if (outcome_)
            outcome_ = tl::unexpected(std::move(member.error()));
        return T{};
    }
    /// The record that was put together from the members, unless one of them was wrong.
    template <typename T>
    Expected<T> finish(T record) {
        return std::move(outcome_).map([&record] { return std::move(record); });
    }

private:
    Expected<void> outcome_;
};

Expected<UUID> requiredId(const object& row) {
    return requiredText(row, "id").and_then([](std::string_view text) -> Expected<UUID> {
        if (const auto id = UUID::parse(text))
            return *id;
        return failure("\"id\" is not a UUID.");
    });
}

Expected<Track> decodeOwnedTrack(const element& value) {
    return decodeTrack(value).map([](const TrackView& track) { return track.toTrack(); });
}

Expected<std::vector<Track>> requiredOptions(const object& row) {
    const auto elements = requiredArray(row, "options");
    if (!elements)
        return tl::unexpected(elements.error());
    std::vector<Track> options;
    for (const element value : *elements) {
        auto track = decodeOwnedTrack(value);
        if (!track)
            return tl::unexpected(track.error());
        options.push_back(std::move(*track));
    }
    return options;
}

Expected<std::optional<Track>> optionalSelection(const object& row) {
    element value;
    if (row["selectedTrack"].get(value) || value.is_null())
        return std::nullopt;
    return decodeOwnedTrack(value);
}

Expected<std::optional<std::int64_t>> optionalTempo(const object& track) {
    element value;
    if (track["bpm"].get(value) || value.is_null())
        return std::nullopt;
    return wholeNumber(value, "bpm");
}

Expected<MatchedTrack> decodeRow(const element& value) {
    object row;
    if (value.get(row))
        return failure("A row is not an object.");
    Members members;
    MatchedTrack result;
    result.id = members.take(requiredId(row));
    result.title = members.take(requiredText(row, "title"));
    result.artist = members.take(requiredText(row, "artist"));
    result.found = members.take(requiredBool(row, "found"));
    result.options = members.take(requiredOptions(row));
    result.selectedTrack = members.take(optionalSelection(row));
    result.include = members.take(requiredBool(row, "include"));
    return members.finish(std::move(result));
}

Expected<object> parsedObject(simdjson::dom::parser& parser, std::string_view bytes, bool copied) {
    if (bytes.starts_with("\xEF\xBB\xBF"))
        bytes.remove_prefix(3);
    element document;
    if (const auto error = parser.parse(bytes.data(), bytes.size(), copied).get(document))
        return failure(simdjson::error_message(error));
    object root;
    if (document.get(root))
        return failure("The document is not an object.");
    return root;
}

} // namespace

Expected<object> parseObject(simdjson::dom::parser& parser, std::string_view bytes) {
    return parsedObject(parser, bytes, true);
}

Expected<object> parseLongObject(simdjson::dom::parser& parser, std::string bytes) {
    bytes.reserve(bytes.size() + simdjson::SIMDJSON_PADDING); // the parser looks past the end in blocks
    return parsedObject(parser, bytes, false);
}

Expected<std::string_view> requiredText(const object& object, std::string_view key) {
    std::string_view text;
    if (object[key].get(text))
        return wrongKind(key, "a string");
    return text;
}

Expected<std::optional<std::string_view>> optionalText(const object& object, std::string_view key) {
    element value;
    if (object[key].get(value) || value.is_null())
        return std::nullopt;
    std::string_view text;
    if (value.get(text))
        return wrongKind(key, "a string");
    return text;
}

Expected<bool> requiredBool(const object& object, std::string_view key) {
    bool value = false;
    if (object[key].get(value))
        return wrongKind(key, "true or false");
    return value;
}

Expected<std::int64_t> wholeNumber(const element& value, std::string_view key) {
    std::int64_t number = 0;
    if (!value.get(number))
        return number;
    double real = 0; // 128.0 is a whole number too
    constexpr double limit = 9223372036854775808.0;
    if (!value.is_double() || value.get(real) || std::trunc(real) != real || real < -limit || real >= limit)
        return wrongKind(key, "a whole number");
    return static_cast<std::int64_t>(real);
}

Expected<simdjson::dom::array> requiredArray(const object& object, std::string_view key) {
    simdjson::dom::array array;
    if (object[key].get(array))
        return wrongKind(key, "an array");
    return array;
}

Expected<TrackView> decodeTrack(const element& value) {
    object track;
    if (value.get(track))
        return failure("A track is not an object.");
    Members members;
    TrackView result;
    result.title = members.take(requiredText(track, "title"));
    result.artist = members.take(requiredText(track, "artist"));
    result.genre = members.take(requiredText(track, "genre"));
    result.path = members.take(requiredText(track, "path"));
    result.bpm = members.take(optionalTempo(track));
    return members.finish(result);
}

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

Expected<MatchSession> decodeSession(std::string_view bytes) {
    simdjson::dom::parser parser;
    const auto root = parseObject(parser, bytes);
    if (!root)
        return tl::unexpected(root.error());
    const auto input = requiredText(*root, "matchInput");
    if (!input)
        return tl::unexpected(input.error());
    const auto rows = requiredArray(*root, "matchedTracks");
    if (!rows)
        return tl::unexpected(rows.error());
    MatchSession session;
    session.matchInput = *input;
    session.matchedTracks.reserve(rows->size());
    for (const element value : *rows) {
        auto row = decodeRow(value);
        if (!row)
            return tl::unexpected(row.error());
        session.matchedTracks.push_back(std::move(*row));
    }
    return session;
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
    simdjson::dom::parser parser;
    element document;
    if (const auto error = parser.parse(bytes.data(), bytes.size()).get(document))
        return failure(simdjson::error_message(error));
    simdjson::dom::array array;
    if (document.get(array))
        return failure("The document is not an array.");
    std::vector<std::string> texts;
    for (const element value : array) {
        std::string_view text;
        if (value.get(text))
            return failure("The array holds something other than strings.");
        texts.emplace_back(text);
    }
    return texts;
}

} // namespace orvalen
