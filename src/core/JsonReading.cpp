#include "core/JsonReading.h"

#include "core/JsonNumbers.h"

#include <cerrno>
#include <cmath>
#include <new>
#include <simdjson.h>

namespace orvalen {

using simdjson::dom::element;

struct JsonObject::Parsed {
    simdjson::dom::object members;
    Expected<void>& outcome;

    /// Returns the member, or nullopt if it is missing or null.
    std::optional<element> optional(std::string_view key) const {
        element value;
        if (members[key].get(value) || value.is_null())
            return std::nullopt;
        return value;
    }
};

namespace {

std::string wrongKind(std::string_view key, std::string_view kind) {
    std::string description(1, '"');
    return description.append(key).append("\" is missing or is not ").append(kind).append(".");
}

/// Parses `bytes` in place, so the result refers to them.
Expected<element> parse(simdjson::dom::parser& parser, std::string& bytes) {
    bytes.reserve(bytes.size() + simdjson::SIMDJSON_PADDING); // the parser reads past the end in blocks
    const std::size_t start = bytes.starts_with("\xEF\xBB\xBF") ? 3 : 0;
    element document;
    auto error = parser.parse(bytes.data() + start, bytes.size() - start, false).get(document);
    // A number out of range is accepted in a member that is ignored.
    if (error == simdjson::NUMBER_ERROR)
        error = parser.parse(withoutOversizedNumbers(std::string_view(bytes).substr(start))).get(document);
    if (error)
        return failure(simdjson::error_message(error));
    return document;
}

std::optional<std::int64_t> toWholeNumber(const element& value) {
    std::int64_t number = 0;
    if (!value.get(number))
        return number;
    double real = 0;
    constexpr double limit = 9223372036854775808.0;
    if (!value.is_double() || value.get(real) || std::trunc(real) != real || real < -limit || real >= limit)
        return std::nullopt;
    return static_cast<std::int64_t>(real);
}

} // namespace

template <typename T>
T JsonObject::required(std::string_view key, std::string_view kind) const {
    T value{};
    if (parsed_.members[key].get(value))
        fail(wrongKind(key, kind));
    return value;
}

std::string_view JsonObject::text(std::string_view key) const {
    return required<std::string_view>(key, "a string");
}

std::optional<std::string_view> JsonObject::optionalText(std::string_view key) const {
    return parsed_.optional(key) ? std::optional(text(key)) : std::nullopt;
}

bool JsonObject::boolean(std::string_view key) const {
    return required<bool>(key, "true or false");
}

std::int64_t JsonObject::wholeNumber(std::string_view key) const {
    const auto value = parsed_.optional(key);
    const auto number = value ? toWholeNumber(*value) : std::nullopt;
    if (!number)
        fail(wrongKind(key, "a whole number"));
    return number.value_or(0);
}

std::optional<std::int64_t> JsonObject::optionalWholeNumber(std::string_view key) const {
    return parsed_.optional(key) ? std::optional(wholeNumber(key)) : std::nullopt;
}

void JsonObject::object(std::string_view key, const Reader& read) const {
    const Parsed parsed{required<simdjson::dom::object>(key, "an object"), parsed_.outcome};
    if (parsed_.outcome)
        read(JsonObject(parsed));
}

void JsonObject::optionalObject(std::string_view key, const Reader& read) const {
    if (parsed_.optional(key))
        object(key, read);
}

void JsonObject::objects(std::string_view key, const Reader& read) const {
    const auto array = required<simdjson::dom::array>(key, "an array");
    if (!parsed_.outcome)
        return;
    for (const element value : array) {
        Parsed parsed{{}, parsed_.outcome};
        if (value.get(parsed.members))
            fail(wrongKind(key, "an array of objects"));
        if (!parsed_.outcome)
            return;
        read(JsonObject(parsed));
    }
}

void JsonObject::texts(std::string_view key, const std::function<void(std::string_view)>& read) const {
    const auto array = required<simdjson::dom::array>(key, "an array");
    if (!parsed_.outcome)
        return;
    for (const element value : array) {
        std::string_view text;
        if (value.get(text))
            return fail(wrongKind(key, "an array of strings"));
        read(text);
    }
}

void JsonObject::requireTextsOnly() const {
    for (const auto member : parsed_.members)
        if (!member.value.is_string())
            return fail(wrongKind(member.key, "a string"));
}

void JsonObject::fail(std::string description) const {
    if (parsed_.outcome)
        parsed_.outcome = failure(std::move(description));
}

bool JsonObject::readPart(const Reader& read) const {
    Expected<void> outcome;
    const Parsed parsed{parsed_.members, outcome};
    read(JsonObject(parsed));
    return outcome.has_value();
}

Expected<void> readJsonObject(std::string bytes, const JsonObject::Reader& read) try {
    simdjson::dom::parser parser;
    const auto document = parse(parser, bytes);
    if (!document)
        return tl::unexpected(document.error());
    Expected<void> outcome;
    JsonObject::Parsed root{{}, outcome};
    if (document->get(root.members))
        return failure("The document is not an object.");
    read(JsonObject(root));
    return outcome;
} catch (const std::bad_alloc&) {
    return systemFailure(ENOMEM);
}

Expected<std::vector<std::string>> readJsonTexts(std::string bytes) try {
    simdjson::dom::parser parser;
    const auto document = parse(parser, bytes);
    if (!document)
        return tl::unexpected(document.error());
    simdjson::dom::array array;
    if (document->get(array))
        return failure("The document is not an array.");
    std::vector<std::string> texts;
    for (const element value : array) {
        std::string_view text;
        if (value.get(text))
            return failure("The array contains other values than strings.");
        texts.emplace_back(text);
    }
    return texts;
} catch (const std::bad_alloc&) {
    return systemFailure(ENOMEM);
}

TrackView readTrack(const JsonObject& object) {
    return {object.text("title"), object.text("artist"), object.text("genre"), object.text("path"),
            object.optionalWholeNumber("bpm")};
}

} // namespace orvalen
