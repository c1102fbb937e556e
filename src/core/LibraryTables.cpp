#include "core/LibraryTables.h"

#include "core/Keys.h"

#include <cassert>
#include <functional>
#include <limits>

namespace orvalen {
namespace {

std::uint32_t length32(std::string_view text) {
    assert(text.size() <= std::numeric_limits<std::int32_t>::max());
    return static_cast<std::uint32_t>(text.size());
}

std::size_t hashOfKey(std::string_view key) {
    return std::hash<std::string_view>{}(key);
}

} // namespace

TrackView TrackRecord::view() const {
    const char* const artist = texts + titleLength;
    const char* const genre = artist + artistLength;
    return TrackView({texts, titleLength}, {artist, artistLength}, {genre, genreLength}, path(),
                     hasBPM ? std::optional(bpm) : std::nullopt);
}

std::optional<std::uint32_t> LibraryTables::findKey(std::string_view key) const {
    return keyNumbers.find(hashOfKey(key), [&](std::uint32_t number) { return keys[number].view() == key; });
}

PositionRange LibraryTables::positionsOf(std::uint32_t key) const {
    const std::size_t next = std::size_t(key) + 1;
    return {keys[key].firstPosition, next < keys.size() ? keys[next].firstPosition : records.size()};
}

TrackRecord TrackFiler::file(const TrackView& track, LibraryTables& tables) {
    // The key is the joined normalised halves, so the halves are not stored again.
    normalizeInto(key_, track.artist);
    normalizeInto(title_, track.title);
    const std::uint32_t artistInKey = length32(key_);
    if (!key_.empty() && !title_.empty())
        key_ += ' ';
    key_ += title_;

    TrackRecord record;
    record.key = keyNumber(tables);
    record.artistInKey = artistInKey;
    record.texts = tables.texts.add({track.title, track.artist, track.genre, track.path});
    record.titleLength = length32(track.title);
    record.artistLength = length32(track.artist);
    record.genreLength = length32(track.genre);
    record.pathLength = length32(track.path) & 0x7FFFFFFF;
    record.hasBPM = track.bpm.has_value();
    record.bpm = track.bpm.value_or(0);
    return record;
}

std::uint32_t TrackFiler::keyNumber(LibraryTables& tables) {
    if (const auto found = tables.findKey(key_))
        return *found;
    const auto number = static_cast<std::uint32_t>(tables.keys.size());
    tables.keys.push_back({tables.texts.add({key_}), length32(key_), 0});
    tables.keyNumbers.insert(hashOfKey(key_), number);
    return number;
}

} // namespace orvalen
