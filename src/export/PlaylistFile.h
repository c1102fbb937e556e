#pragma once

#include "core/Error.h"
#include "core/Location.h"
#include "core/MatchedTrack.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

/// Returns the paths of the included rows with a selected track, one per line, without a line feed at the
/// end.
std::string playlistFileText(const std::vector<MatchedTrack>& rows);

/// Replaces the destination atomically; see writeFileAtomically().
Expected<void> writePlaylistFile(std::string_view text, const Location& destination);

} // namespace orvalen
