#include "core/LibraryIndexBuilder.h"

#include "core/LibraryTables.h"

#include <utility>

namespace orvalen {

/// The unfinished index. Records are in the order in which they were added, and `firstPosition` of a key
/// counts its tracks.
struct LibraryIndexBuilder::Draft {
    LibraryTables tables;
    TrackFiler filer;

    void sortIntoLibraryOrder() {
        std::uint32_t next = 0;
        for (KeyRecord& key : tables.keys)
            next += std::exchange(key.firstPosition, next);
        std::vector<std::uint32_t> places;
        places.reserve(tables.keys.size());
        for (const KeyRecord& key : tables.keys)
            places.push_back(key.firstPosition);
        std::vector<TrackRecord> sorted(tables.records.size());
        for (const TrackRecord& record : tables.records)
            sorted[places[record.key]++] = record;
        tables.records = std::move(sorted);
    }
};

LibraryIndexBuilder::LibraryIndexBuilder() : draft_(std::make_unique<Draft>()) {}
LibraryIndexBuilder::~LibraryIndexBuilder() = default;
LibraryIndexBuilder::LibraryIndexBuilder(LibraryIndexBuilder&&) noexcept = default;
LibraryIndexBuilder& LibraryIndexBuilder::operator=(LibraryIndexBuilder&&) noexcept = default;

void LibraryIndexBuilder::fileTrack(const TrackView& track) {
    LibraryTables& tables = draft_->tables;
    tables.records.push_back(draft_->filer.file(track, tables));
    ++tables.keys[tables.records.back().key].firstPosition;
}

LibraryIndex LibraryIndexBuilder::finish() {
    const std::unique_ptr<Draft> draft = std::exchange(draft_, std::make_unique<Draft>());
    draft->sortIntoLibraryOrder();
    draft->tables.keys.shrink_to_fit();
    const auto body = std::make_shared<const LibraryIndex::Body>(std::move(draft->tables));
    body->folderTable(); // built here, because a scan calls this on a worker and not on the main thread
    return LibraryIndex(body);
}

LibraryIndex buildIndex(std::span<const Track> tracks) {
    LibraryIndexBuilder builder;
    for (const Track& track : tracks)
        builder.fileTrack(track);
    return builder.finish();
}

} // namespace orvalen
