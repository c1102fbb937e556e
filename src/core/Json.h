#pragma once

#include "core/Error.h"
#include "core/MatchSession.h"
#include "core/Track.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

// JSON of session files and lists of texts. Thread-safe. Decoding fails as a whole if one element is invalid.
// Unknown members are ignored. Optional members may be missing or null.

/// Returns compact JSON in which every ‘/’ is written as ‘\/’.
std::string encodeSession(std::string_view matchInput, std::span<const MatchedTrack> matchedTracks);
inline std::string encodeSession(const MatchSession& session) {
    return encodeSession(session.matchInput, session.matchedTracks);
}
/// Decodes a session file. Parses the bytes in place, so move them into the call.
Expected<MatchSession> decodeSession(std::string bytes);

/// Returns a compact JSON array of strings.
std::string encodeTexts(const std::vector<std::string>& texts);
/// Decodes a JSON array of strings.
Expected<std::vector<std::string>> decodeTexts(std::string_view bytes);

} // namespace orvalen
