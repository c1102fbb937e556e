#pragma once

#include "core/LibraryIndex.h"

#include <memory>
#include <span>

namespace orvalen {

/// Builds an index from many tracks. Use from one thread at a time.
class LibraryIndexBuilder {
public:
    LibraryIndexBuilder();
    ~LibraryIndexBuilder();
    LibraryIndexBuilder(LibraryIndexBuilder&&) noexcept;
    LibraryIndexBuilder& operator=(LibraryIndexBuilder&&) noexcept;

    /// Adds the track under its library key. Copies the texts.
    void fileTrack(const TrackView& track);
    /// Returns the index of all tracks added. The builder is empty afterwards.
    LibraryIndex finish();

private:
    struct Draft;
    std::unique_ptr<Draft> draft_;
};

LibraryIndex buildIndex(std::span<const Track> tracks);

} // namespace orvalen
