#pragma once

#include "core/Track.h"
#include "search/SongWords.h"
#include "search/WordDistance.h"
#include "search/WordTable.h"

#include <string_view>
#include <vector>

namespace orvalen {

/// A word with its letters and its weight in a comparison.
struct WeighedWord {
    std::string text;
    Letters letters;
    float weight = 0;
};

using WeighedWords = std::vector<WeighedWord>;

/// Returns the words with their weights: less for guests and asides than for plain words, least for articles,
/// and more for rare words.
WeighedWords weigh(const std::vector<SongWord>& words, const WordTable& table);

/// What two texts have in common, as sums of weights. The order of words does not matter.
struct Overlap {
    float matched = 0; ///< of the wanted words with a counterpart, each multiplied by the similarity
    float wanted = 0;  ///< of all wanted words
    float left = 0;    ///< of the other text's words without a counterpart

    /// Returns the matched share of the wanted words, 0 to 1. `costOfLeftWords` (0 to 1) reduces it for words
    /// that only the other text has.
    float share(float costOfLeftWords) const;
};

/// Compares two texts. With `withBeginnings`, a wanted word also matches a longer word that starts with it.
Overlap overlapOf(const WeighedWords& wanted, const WeighedWords& other, bool withBeginnings);

/// The words of a song. Guests count as artists, even if the title names them.
struct SongParts {
    WeighedWords artist;
    WeighedWords title;
};

SongParts partsOf(std::string_view artist, std::string_view title, const WordTable& table);

/// Returns how likely the file is the wanted song, 0 to 1; 0 if they differ too much to be proposed.
float likelihood(const SongParts& wanted, const SongParts& file);

} // namespace orvalen
