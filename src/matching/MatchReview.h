#pragma once

#include "core/MatchedTrack.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

struct ContentView;

// What a result row shows: pure functions of the row and of what is being previewed.

/// Artist, EN DASH, title: the label of the row's box.
std::string rowLabel(const MatchedTrack& row);
/// The label with the tempo of the selected track, or else of the first option that has one.
std::string rowHeader(const MatchedTrack& row);
/// Bold while the row stands for what is previewed, and while neither is anything.
bool isHeaderBold(const MatchedTrack& row, const std::optional<Track>& previewed);
/// Both present and of equal paths.
bool isPreviewed(const MatchedTrack& row, const std::optional<Track>& previewed);
/// A picker is shown for two or more options.
bool showsPicker(const MatchedTrack& row);
std::string optionLabel(const Track& option);
/// The entry that the picker shows: the first option with the selected track's path; -1 for none.
int pickedOption(const MatchedTrack& row);
/// "File: " and the path.
std::string fileText(const Track& track);
/// ‘128 BPM’ or "No BPM found".
std::string tempoText(const Track& track);
/// ‘0 tracks selected’, ‘1 track selected’.
std::string selectionSummary(const std::vector<MatchedTrack>& rows);
std::size_t includedCount(const std::vector<MatchedTrack>& rows);

// Operations on the rows. Main thread; rows are identified by position, and a position that no row has is
// ignored.

void setIncludeForAll(ContentView& view, bool value);
void setInclude(ContentView& view, std::size_t row, bool value);
/// The picker's action: selects the first option with the path, or none, and remembers the choice.
void chooseOption(ContentView& view, std::size_t row, std::string_view path);
/// Stores the selected track's path under the row's library key; nothing without a selection.
void rememberPreferredMatch(ContentView& view, const MatchedTrack& row);

} // namespace orvalen
