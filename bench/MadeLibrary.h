#pragma once

#include "core/LibraryIndex.h"
#include "core/Track.h"

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace orvalen::test {

/// Generates a library that is similar to a real one. There is one artist per eight tracks or so, and a few
/// artists have very many tracks. Few words are common and many are rare, some with accents. Each album has
/// its own folder. The same seed generates the same library.
class MadeLibrary {
public:
    explicit MadeLibrary(std::uint32_t seed = 1);

    Track nextTrack();
    LibraryIndex index(std::size_t tracks);
    /// Returns wanted lines: exact ones and shortened ones for tracks generated so far, and unknown songs.
    std::vector<std::string> wantedLines(std::size_t count);

private:
    /// Returns a random number from 0 to `end` - 1.
    std::size_t below(std::size_t end);
    /// Returns a random number from 0 to `end` - 1. Small numbers are much more likely.
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
    std::vector<Track> kept_; ///< every 64th generated track, for wanted lines
    std::size_t made_ = 0;
};

} // namespace orvalen::test
