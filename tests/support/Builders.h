#pragma once

#include "core/AllTracks.h"
#include "core/MatchedTrack.h"
#include "core/Track.h"

#include <string>
#include <vector>

namespace orvalen::test {

/// Returns a track. Its default path is made from its texts.
inline Track track(std::string artist, std::string title, std::optional<std::int64_t> bpm = {},
                   std::string path = {}) {
    if (path.empty())
        path = "/Music/" + artist + " - " + title + ".mp3";
    return Track{std::move(title), std::move(artist), "", std::move(path), bpm};
}

/// Returns a row with these candidates, the first one selected.
inline MatchedTrack row(std::string artist, std::string title, std::vector<Track> options = {},
                        bool include = false) {
    MatchedTrack result;
    result.id = UUID::random();
    result.artist = std::move(artist);
    result.title = std::move(title);
    result.found = !options.empty();
    if (!options.empty())
        result.selectedTrack = options.front();
    result.options = std::move(options);
    result.include = include;
    return result;
}

/// Returns the paths of tracks or locations.
template <typename Items>
std::vector<std::string> pathsOf(const Items& items) {
    std::vector<std::string> paths;
    for (const auto& item : items)
        paths.emplace_back(item.path);
    return paths;
}

/// Returns copies of all tracks.
inline std::vector<Track> tracksOf(const LibraryIndex& index) {
    std::vector<Track> tracks;
    for (const TrackView& each : allTracks(index))
        tracks.push_back(each.toTrack());
    return tracks;
}

} // namespace orvalen::test
