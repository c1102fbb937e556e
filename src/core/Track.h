#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalen {

/// One audio file of the library. Texts are valid UTF-8.
struct Track {
    std::string title;
    std::string artist;
    std::string genre;
    std::string path;                ///< absolute
    std::optional<std::int64_t> bpm; ///< nullopt and 0 are different values
};

/// A track that does not own its texts. Valid as long as the texts it was made from.
struct TrackView {
    std::string_view title;
    std::string_view artist;
    std::string_view genre;
    std::string_view path;
    std::optional<std::int64_t> bpm;

    TrackView() = default;
    TrackView(const Track& track)
        : title(track.title), artist(track.artist), genre(track.genre), path(track.path), bpm(track.bpm) {}
    TrackView(std::string_view title_, std::string_view artist_, std::string_view genre_,
              std::string_view path_, std::optional<std::int64_t> bpm_)
        : title(title_), artist(artist_), genre(genre_), path(path_), bpm(bpm_) {}

    Track toTrack() const;
};

/// Compares all five fields, texts by canonical equivalence.
bool operator==(const TrackView& left, const TrackView& right);
inline bool operator==(const Track& left, const Track& right) {
    return TrackView(left) == TrackView(right);
}

/// Returns whether both have the same path, or both are absent.
bool isSameTrack(const std::optional<Track>& left, const std::optional<Track>& right);

/// Returns ‘1 track’, ‘2 tracks’.
std::string trackCountText(std::int64_t count);

/// Returns the track with exactly this path, else the first with a canonically equal path, else the end. Two
/// files can have names that differ only in how accents are encoded.
std::vector<Track>::const_iterator findByPath(const std::vector<Track>& tracks, std::string_view path);

/// Like isSameTrack(), but distinguishes two of the tracks whose paths differ only in how accents are
/// encoded.
bool isSameTrackAmong(const std::vector<Track>& tracks, const std::optional<Track>& left,
                      const std::optional<Track>& right);

/// Equal tracks have equal hashes.
struct TrackHash {
    using is_transparent = void;
    std::size_t operator()(const TrackView& track) const;
};

} // namespace orvalen
