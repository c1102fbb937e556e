#pragma once

#include "core/Error.h"
#include "core/Location.h"
#include "core/MatchedTrack.h"

#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

/// The paths of the included rows that have a selected track, one a line, no line feed after the last.
std::string playlistFileText(const std::vector<MatchedTrack>& rows);

/// Replaces the destination atomically; a failure leaves it as it was.
Expected<void> writePlaylistFile(std::string_view text, const Location& destination);

} // namespace orvalen
