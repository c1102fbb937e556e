#pragma once

#include "core/Error.h"
#include "core/Track.h"

#include <optional>
#include <simdjson.h>
#include <string_view>

namespace orvalen {

// Shared by the readers of our files. The views live as long as the parser's document. A required member that
// is missing or of another kind is an error; an optional one may be missing or null.

/// The object that the document is, with or without a byte-order mark before it.
Expected<simdjson::dom::object> parseObject(simdjson::dom::parser& parser, std::string_view bytes);
/// The same for a long text: it is read where it stands and let go once it is read.
Expected<simdjson::dom::object> parseLongObject(simdjson::dom::parser& parser, std::string bytes);

Expected<std::string_view> requiredText(const simdjson::dom::object& object, std::string_view key);
Expected<std::optional<std::string_view>> optionalText(const simdjson::dom::object& object,
                                                       std::string_view key);
Expected<bool> requiredBool(const simdjson::dom::object& object, std::string_view key);
Expected<std::int64_t> wholeNumber(const simdjson::dom::element& element, std::string_view key);
Expected<simdjson::dom::array> requiredArray(const simdjson::dom::object& object, std::string_view key);
Expected<TrackView> decodeTrack(const simdjson::dom::element& element);

} // namespace orvalen
