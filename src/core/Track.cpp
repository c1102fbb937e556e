#include "core/Track.h"

#include "core/Text.h"

#include <algorithm>

namespace orvalen {

Track TrackView::toTrack() const {
    return Track{std::string(title), std::string(artist), std::string(genre), std::string(path), bpm};
}

bool operator==(const TrackView& left, const TrackView& right) {
    return left.bpm == right.bpm && canonicallyEqual(left.title, right.title) &&
           canonicallyEqual(left.artist, right.artist) && canonicallyEqual(left.genre, right.genre) &&
           canonicallyEqual(left.path, right.path);
}

bool isSameTrack(const std::optional<Track>& left, const std::optional<Track>& right) {
    if (!left || !right)
        return left.has_value() == right.has_value();
    return canonicallyEqual(left->path, right->path);
}

std::string trackCountText(std::int64_t count) {
    return std::to_string(count) + (count == 1 ? " track" : " tracks");
}

std::vector<Track>::const_iterator findByPath(const std::vector<Track>& tracks, std::string_view path) {
    const auto same = std::ranges::find(tracks, path, &Track::path);
    if (same != tracks.end())
        return same;
    return std::ranges::find_if(tracks,
                                [path](const Track& track) { return canonicallyEqual(track.path, path); });
}

bool isSameTrackAmong(const std::vector<Track>& tracks, const std::optional<Track>& left,
                      const std::optional<Track>& right) {
    return isSameTrack(left, right) &&
           (!left || findByPath(tracks, left->path) == findByPath(tracks, right->path));
}

std::size_t TrackHash::operator()(const TrackView& track) const {
    std::size_t seed = track.bpm ? static_cast<std::size_t>(*track.bpm) + 1 : 0;
    const auto mix = [&seed](std::size_t value) {
        seed ^= value + 0x9E3779B97F4A7C15ULL + (seed << 6) + (seed >> 2);
    };
    mix(track.bpm.has_value());
    mix(canonicalHash(track.title));
    mix(canonicalHash(track.artist));
    mix(canonicalHash(track.genre));
    mix(canonicalHash(track.path));
    return seed;
}

} // namespace orvalen
