#pragma once

#include "core/LibraryIndex.h"
#include "core/Track.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace orvalen::test {

/// A made library that looks like a grown one: an artist for about every eight tracks, a few artists with
/// very many, words that are the rarer the later they stand, accents in some, one album a folder. The same
/// seed gives the same library.
class MadeLibrary {
public:
    explicit MadeLibrary(std::uint32_t seed = 1);

    Track nextTrack();
    LibraryIndex index(std::size_t tracks);
    /// Lines as a person would want them of the tracks made so far: some exact, some loose, some unknown.
    std::vector<std::string> wantedLines(std::size_t count);

private:
    std::size_t below(std::size_t end);
    /// Small numbers are much more likely.
    std::size_t skewedBelow(std::size_t end);
    std::string word();
    std::string words(std::size_t least, std::size_t most);
    std::string name();
    void startAlbum();

    std::mt19937 random_;
    std::vector<std::string> vocabulary_;
    std::vector<std::string> artists_;
    std::string folder_;
    std::size_t artist_ = 0;
    std::size_t trackNumber_ = 0;
    std::size_t leftOnAlbum_ = 0;
    std::size_t leftInGenre_ = 0;
    std::string genre_;
    std::vector<Track> kept_; ///< a sample of what was made, for wanted lines
    std::size_t made_ = 0;
};

} // namespace orvalen::test
