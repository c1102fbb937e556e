#include "matching/MatchReview.h"

#include "app/state/ContentView.h"
#include "core/Keys.h"
#include "core/Text.h"
#include "library/EarlierChoices.h"
#include "library/PlaylistDatabaseManager.h"

#include <algorithm>

namespace orvalen {
namespace {

std::string artistAndTitle(std::string_view artist, std::string_view title) {
    std::string text(artist);
    text += " – ";
    text += title;
    return text;
}

std::string tempoSuffix(std::optional<std::int64_t> bpm) {
    return bpm ? " (" + std::to_string(*bpm) + " BPM)" : "";
}

std::optional<std::int64_t> rowTempo(const MatchedTrack& row) {
    if (row.selectedTrack && row.selectedTrack->bpm)
        return row.selectedTrack->bpm;
    for (const Track& option : row.options)
        if (option.bpm)
            return option.bpm;
    return std::nullopt;
}

} // namespace

std::string rowLabel(const MatchedTrack& row) {
    return artistAndTitle(row.artist, row.title);
}

std::string rowHeader(const MatchedTrack& row) {
    return rowLabel(row) + tempoSuffix(rowTempo(row));
}

bool isHeaderBold(const MatchedTrack& row, const std::optional<Track>& previewed) {
    return isSameTrackAmong(row.options, previewed, row.selectedTrack);
}

bool isPreviewed(const MatchedTrack& row, const std::optional<Track>& previewed) {
    return previewed && isHeaderBold(row, previewed);
}

bool showsPicker(const MatchedTrack& row) {
    return row.options.size() >= 2;
}

std::string optionLabel(const Track& option) {
    return artistAndTitle(option.artist, option.title) + tempoSuffix(option.bpm);
}

int pickedOption(const MatchedTrack& row) {
    if (!row.selectedTrack)
        return -1;
    const auto option = findByPath(row.options, row.selectedTrack->path);
    return option == row.options.end() ? -1 : static_cast<int>(option - row.options.begin());
}

std::string fileText(const Track& track) {
    return "File: " + track.path;
}

std::string tempoText(const Track& track) {
    return track.bpm ? std::to_string(*track.bpm) + " BPM" : "No BPM found";
}

std::string selectionSummary(const std::vector<MatchedTrack>& rows) {
    return trackCountText(static_cast<std::int64_t>(includedCount(rows))) + " selected";
}

std::size_t includedCount(const std::vector<MatchedTrack>& rows) {
    return static_cast<std::size_t>(std::ranges::count_if(rows, &MatchedTrack::include));
}

void setIncludeForAll(ContentView& view, bool value) {
    for (std::size_t row = 0; row < view.matchedTracks.get().size(); ++row)
        setInclude(view, row, value);
}

void setInclude(ContentView& view, std::size_t row, bool value) {
    if (row >= view.matchedTracks.get().size())
        return;
    view.matchedTracks.update([&](std::vector<MatchedTrack>& rows) { rows[row].include = value; });
}

void chooseOption(ContentView& view, std::size_t row, std::string_view path) {
    const std::vector<MatchedTrack>& rows = view.matchedTracks.get();
    if (row >= rows.size())
        return;
    const auto option = findByPath(rows[row].options, path);
    std::optional<Track> selected;
    if (option != rows[row].options.end())
        selected = *option;
    view.matchedTracks.update(
        [&](std::vector<MatchedTrack>& changed) { changed[row].selectedTrack = std::move(selected); });
    rememberPreferredMatch(view, rows[row]);
}

void rememberPreferredMatch(ContentView& view, const MatchedTrack& row) {
    if (!row.selectedTrack)
        return;
    const std::string key = libraryKey(row.artist, row.title);
    view.database().savePreferredMatch(key, row.selectedTrack->path);
    forgetEarlierChoice(view, key);
}

} // namespace orvalen
