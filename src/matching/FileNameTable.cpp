#include "matching/FileNameTable.h"

#include "core/Keys.h"
#include "core/Text.h"

#include <bit>
#include <functional>
#include <string>

namespace orvalen {
namespace {

/// Looking through so many is quick, and so few buckets' ends stay in the processor's cache while they are
/// filled.
constexpr std::size_t tracksInBucket = 64;

std::size_t hashOf(std::string_view key) {
    return std::hash<std::string_view>{}(key);
}

std::uint32_t tagOf(std::size_t hash) {
    return static_cast<std::uint32_t>(hash);
}

} // namespace

FileNameTable::FileNameTable(const LibraryIndex& index) {
    const std::size_t count = index.trackCount();
    shift_ = std::min(63, 64 - static_cast<int>(std::bit_width(count / tracksInBucket)));
    std::vector<std::size_t> hashes(count);
    bucketEnds_.resize((std::size_t(1) << (64 - shift_)) + 1);
    std::string key;
    for (std::size_t position = 0; position < count; ++position) {
        normalizeInto(key, bareName(index.track(position).path));
        hashes[position] = hashOf(key);
        ++bucketEnds_[bucketOf(hashes[position]) + 1];
    }
    for (std::size_t bucket = 1; bucket < bucketEnds_.size(); ++bucket)
        bucketEnds_[bucket] += bucketEnds_[bucket - 1];

    // Each bucket's place moves from its beginning to its end, which is where the next one begins.
    entries_.resize(count);
    for (std::size_t position = 0; position < count; ++position)
        entries_[bucketEnds_[bucketOf(hashes[position])]++] = {tagOf(hashes[position]),
                                                               static_cast<std::uint32_t>(position)};
    bucketEnds_.pop_back();
}

std::vector<std::size_t> FileNameTable::find(const LibraryIndex& index, std::string_view key) const {
    std::vector<std::size_t> positions;
    const std::size_t hash = hashOf(key);
    const std::size_t bucket = bucketOf(hash);
    std::string candidate;
    for (std::size_t i = bucket == 0 ? 0 : bucketEnds_[bucket - 1]; i < bucketEnds_[bucket]; ++i) {
        if (entries_[i].tag != tagOf(hash))
            continue;
        normalizeInto(candidate, bareName(index.track(entries_[i].position).path));
        if (candidate == key)
            positions.push_back(entries_[i].position);
    }
    return positions;
}

} // namespace orvalen
