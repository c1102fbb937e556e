#pragma once

#include "core/Track.h"
#include "search/SongWords.h"
#include "search/WordDistance.h"
#include "search/WordTable.h"

#include <string_view>
#include <vector>

namespace orvalen {

/// A word with its letters, and how much it counts in a comparison.
struct WeighedWord {
    std::string text;
    Letters letters;
    float weight = 0;
};

using WeighedWords = std::vector<WeighedWord>;

/// An artist or a title as its words count: guests and asides count less than plain words, articles least.
WeighedWords weigh(const std::vector<SongWord>& words, const WordTable& table);

/// What two texts have in common, as sums of their words' weights. Words may stand in any order.
struct Overlap {
    float matched = 0; ///< of the wanted words, each times its resemblance
    float wanted = 0;  ///< of all wanted words
    float left = 0;    ///< of the other text's words that no wanted word resembles

    /// The matched share of the wanted words, less for words that only the other text has; 0 to 1.
    float share(float costOfLeftWords) const;
};

/// With `withBeginnings` a wanted word also matches a word that it begins.
Overlap overlapOf(const WeighedWords& wanted, const WeighedWords& other, bool withBeginnings);

/// A song's words by part. Guests count as artists wherever they are named.
struct SongParts {
    WeighedWords artist;
    WeighedWords title;
};

SongParts partsOf(std::string_view artist, std::string_view title, const WordTable& table);

/// How likely the file is the wanted song, from 0 to 1, or 0 where the two differ too much to be proposed.
float likelihood(const SongParts& wanted, const SongParts& file);

} // namespace orvalen
