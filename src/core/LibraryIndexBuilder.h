#pragma once

#include "core/LibraryIndex.h"

#include <memory>
#include <span>

namespace orvalen {

/// Files many tracks and hands the index over whole. One thread at a time.
class LibraryIndexBuilder {
public:
    LibraryIndexBuilder();
    ~LibraryIndexBuilder();
    LibraryIndexBuilder(LibraryIndexBuilder&&) noexcept;
    LibraryIndexBuilder& operator=(LibraryIndexBuilder&&) noexcept;

    /// Appends the track to the list under its own library key. The texts are copied.
    void fileTrack(const TrackView& track);
    /// The index of everything filed; the builder is empty afterwards.
    LibraryIndex finish();

private:
    struct Draft;
    std::unique_ptr<Draft> draft_;
};

LibraryIndex buildIndex(std::span<const Track> tracks);

} // namespace orvalen
