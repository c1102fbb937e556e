#pragma once

#include "core/MatchedTrack.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

struct ContentView;

// The texts of a row on the results page. Pure functions, thread-safe.

/// Returns "Artist – Title" of the request.
std::string rowLabel(const MatchedTrack& row);
/// Returns the label with the tempo of the selected track, else of the first candidate that has a tempo.
std::string rowHeader(const MatchedTrack& row);
/// Returns whether the row's selected track is the previewed track, or both are absent.
bool isHeaderBold(const MatchedTrack& row, const std::optional<Track>& previewed);
/// Returns whether the row's selected track is the previewed track; false if either is absent.
bool isPreviewed(const MatchedTrack& row, const std::optional<Track>& previewed);
/// Returns whether the row has at least two candidates.
bool showsPicker(const MatchedTrack& row);
/// Returns "Artist – Title" of the track, with its tempo in parentheses if it has one.
std::string optionLabel(const Track& option);
/// Returns the index of the first candidate with the selected track's path, or -1.
int pickedOption(const MatchedTrack& row);
std::string fileText(const Track& track);
/// Returns ‘128 BPM’ or "No BPM found".
std::string tempoText(const Track& track);
/// Returns ‘0 tracks selected’, ‘1 track selected’.
std::string selectionSummary(const std::vector<MatchedTrack>& rows);
/// Returns the number of included rows.
std::size_t includedCount(const std::vector<MatchedTrack>& rows);

// Operations on the rows of the state. Main thread. `row` is a position; nothing happens if no row has it.

void setIncludeForAll(ContentView& view, bool value);
void setInclude(ContentView& view, std::size_t row, bool value);
/// Selects the first candidate with the path, or none, and stores the preferred match.
void chooseOption(ContentView& view, std::size_t row, std::string_view path);
/// Stores the path of the row's selected track as the preferred match. Does nothing without a selected track.
void rememberPreferredMatch(ContentView& view, const MatchedTrack& row);

} // namespace orvalen
