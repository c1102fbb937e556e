#include "core/LibraryIndex.h"

#include "core/Keys.h"
#include "core/Text.h"

#include <unordered_map>
#include <vector>

namespace orvalen {

struct LibraryIndex::Body {
    std::vector<Track> tracks;
    std::vector<std::string> keys; // a key a position
    std::unordered_map<std::string, PositionRange> ranges;
};

struct LibraryIndexBuilder::Draft {
    std::vector<std::pair<std::string, std::vector<Track>>> lists;
    std::unordered_map<std::string, std::size_t> places;
    std::size_t count = 0;
};

LibraryIndex::LibraryIndex() : LibraryIndex(std::make_shared<const Body>()) {}
LibraryIndex::LibraryIndex(std::shared_ptr<const Body> body) : body_(std::move(body)) {}

std::size_t LibraryIndex::keyCount() const {
    return body_->ranges.size();
}
std::size_t LibraryIndex::trackCount() const {
    return body_->tracks.size();
}
TrackView LibraryIndex::track(std::size_t position) const {
    return body_->tracks[position];
}
std::string_view LibraryIndex::key(std::size_t position) const {
    return body_->keys[position];
}

PositionRange LibraryIndex::positionsUnder(std::string_view key) const {
    const auto found = body_->ranges.find(std::string(key));
    return found == body_->ranges.end() ? PositionRange{} : found->second;
}

LibraryIndexBuilder::LibraryIndexBuilder() : draft_(std::make_unique<Draft>()) {}
LibraryIndexBuilder::~LibraryIndexBuilder() = default;
LibraryIndexBuilder::LibraryIndexBuilder(LibraryIndexBuilder&&) noexcept = default;
LibraryIndexBuilder& LibraryIndexBuilder::operator=(LibraryIndexBuilder&&) noexcept = default;

void LibraryIndexBuilder::fileTrack(const TrackView& track) {
    std::string key = libraryKey(track.artist, track.title);
    const auto [place, added] = draft_->places.try_emplace(key, draft_->lists.size());
    if (added)
        draft_->lists.emplace_back(std::move(key), std::vector<Track>());
    draft_->lists[place->second].second.push_back(track.toTrack());
    ++draft_->count;
}

std::size_t LibraryIndexBuilder::trackCount() const {
    return draft_->count;
}

LibraryIndex LibraryIndexBuilder::finish() {
    auto body = std::make_shared<LibraryIndex::Body>();
    for (auto& [key, tracks] : draft_->lists) {
        const std::size_t first = body->tracks.size();
        for (Track& track : tracks) {
            body->tracks.push_back(std::move(track));
            body->keys.push_back(key);
        }
        body->ranges.emplace(key, PositionRange{first, body->tracks.size()});
    }
    draft_ = std::make_unique<Draft>();
    return LibraryIndex(std::move(body));
}

void fileTrack(LibraryIndex& index, const Track& track) {
    LibraryIndexBuilder builder;
    for (std::size_t position = 0; position < index.trackCount(); ++position)
        builder.fileTrack(index.track(position));
    builder.fileTrack(track);
    index = builder.finish();
}

LibraryIndex buildIndex(std::span<const Track> tracks) {
    LibraryIndexBuilder builder;
    for (const Track& track : tracks)
        builder.fileTrack(track);
    return builder.finish();
}

std::int64_t countTracksUnderFolder(const LibraryIndex& index, std::string_view folder) {
    std::int64_t count = 0;
    for (std::size_t position = 0; position < index.trackCount(); ++position)
        count += hasCanonicalPrefix(index.track(position).path, folder) ? 1 : 0;
    return count;
}

} // namespace orvalen
