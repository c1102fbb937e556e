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

// The JSON forms of the records. Reading fails as a whole: a document with one bad element gives nothing of
// it. Keys that a reader does not know are ignored; a missing or null optional member is absent. Any thread.

/// Compact, with ‘/’ written as ‘\/’.
std::string encodeSession(std::string_view matchInput, std::span<const MatchedTrack> matchedTracks);
inline std::string encodeSession(const MatchSession& session) {
    return encodeSession(session.matchInput, session.matchedTracks);
}
Expected<MatchSession> decodeSession(std::string bytes);

/// A compact array of texts.
std::string encodeTexts(const std::vector<std::string>& texts);
Expected<std::vector<std::string>> decodeTexts(std::string_view bytes);

} // namespace orvalen
