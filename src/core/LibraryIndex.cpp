#include "core/LibraryIndex.h"

#include "core/LibraryTables.h"
#include "core/Text.h"

#include <algorithm>

namespace orvalen {
namespace {

/// Returns a copy with one more element. Reserving the exact size avoids a second move of all elements.
std::vector<TrackRecord> copyWith(const std::vector<TrackRecord>& elements, std::size_t place,
                                  const TrackRecord& element) {
    std::vector<TrackRecord> result;
    result.reserve(elements.size() + 1);
    const auto middle = elements.begin() + static_cast<std::ptrdiff_t>(place);
    result.assign(elements.begin(), middle);
    result.push_back(element);
    result.insert(result.end(), middle, elements.end());
    return result;
}

} // namespace

LibraryIndex::LibraryIndex() : LibraryIndex(std::make_shared<const Body>(LibraryTables())) {}
LibraryIndex::LibraryIndex(std::shared_ptr<const Body> body) : body_(std::move(body)) {}

std::size_t LibraryIndex::keyCount() const {
    return body_->keys.size();
}

std::size_t LibraryIndex::trackCount() const {
    return body_->records.size();
}

TrackView LibraryIndex::track(std::size_t position) const {
    return body_->records[position].view();
}

std::string_view LibraryIndex::key(std::size_t position) const {
    return body_->keys[body_->records[position].key].view();
}

KeyHalves LibraryIndex::keyHalves(std::size_t position) const {
    const std::string_view whole = key(position);
    const std::size_t artist = body_->records[position].artistInKey;
    const std::size_t title = artist == 0 || artist == whole.size() ? artist : artist + 1;
    return {whole.substr(0, artist), whole.substr(title)};
}

PositionRange LibraryIndex::positionsUnder(std::string_view key) const {
    const auto number = isAscii(key) ? body_->findKey(key) : body_->findKey(composed(key));
    return number ? body_->positionsOf(*number) : PositionRange();
}

LibraryIndex::Cache LibraryIndex::cached(Cache (*make)(const LibraryIndex&)) const {
    const std::lock_guard lock(body_->cacheMutex);
    if (!body_->cache)
        body_->cache = make(*this);
    return body_->cache;
}

void fileTrack(LibraryIndex& index, const Track& track) {
    const LibraryTables& old = *index.body_;
    LibraryTables tables{old.texts, {}, {}, old.keyNumbers};
    tables.keys.reserve(old.keys.size() + 1); // a new key would otherwise move all keys
    tables.keys = old.keys;
    const TrackRecord record = TrackFiler().file(track, tables);
    const bool isNewKey = tables.keys.size() > old.keys.size();
    const std::size_t place = isNewKey ? old.records.size() : old.positionsOf(record.key).last;
    if (isNewKey)
        tables.keys.back().firstPosition = static_cast<std::uint32_t>(place);
    for (std::size_t key = std::size_t(record.key) + 1; key < tables.keys.size(); ++key)
        ++tables.keys[key].firstPosition;
    tables.records = copyWith(old.records, place, record);
    index = LibraryIndex(std::make_shared<const LibraryIndex::Body>(std::move(tables)));
}

} // namespace orvalen
