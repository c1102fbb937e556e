#pragma once

#include "core/HashedNumbers.h"
#include "core/LibraryIndex.h"
#include "search/SongWords.h"
#include "search/WordDistance.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace orvalen {

/// A word of the table and its similarity to the wanted word.
struct SimilarWord {
    std::uint32_t word = 0;
    float resemblance = 0;
};

/// The words of a library's artists and titles, and the tracks that contain each word. Two neighbouring words
/// also count as one word if one of them has at most two bytes, so that ‘acdc’ finds ‘AC/DC’. Takes about two
/// microseconds and forty bytes per track. Immutable, thread-safe.
class WordTable {
public:
    explicit WordTable(const LibraryIndex& index);

    /// Returns the words of the table that are similar to `word`, the most similar first. `word` must be
    /// normalised. With `withBeginnings`, includes longer words that start with it.
    std::vector<SimilarWord> similarWords(std::string_view word, bool withBeginnings) const;
    /// Returns the positions of the tracks with the word, in library order.
    std::span<const std::uint32_t> positionsOf(std::uint32_t word) const;
    /// Returns how much the word says about a track, from 1 (at most one track has it) down to 0.15 (very
    /// many tracks have it).
    float rarity(std::string_view word) const { return knownRarity(word).value_or(1); }
    /// Returns rarity(word), or nullopt if no track has the word.
    std::optional<float> knownRarity(std::string_view word) const;
    float rarity(std::uint32_t word) const { return rarities_[word]; }
    /// Returns the number of words of the track at the position, at most 255.
    std::size_t wordCount(std::size_t position) const { return wordCounts_[position]; }
    std::size_t trackCount() const { return wordCounts_.size(); }

private:
    std::uint32_t numberOf(std::string_view word);
    std::optional<std::uint32_t> find(std::string_view word) const;
    std::string_view text(std::uint32_t word) const {
        return std::string_view(texts_).substr(textStarts_[word], textStarts_[word + 1] - textStarts_[word]);
    }
    void groupPositions(const std::vector<std::uint32_t>& words, const std::vector<std::uint32_t>& trackEnds);

    std::string texts_;
    std::vector<std::uint32_t> textStarts_{0};
    std::vector<std::uint64_t> letterSets_;
    std::vector<std::uint8_t> letterCounts_;
    std::vector<float> rarities_;
    HashedNumbers numbers_;
    std::vector<std::uint32_t>
        starts_; ///< start of each word's range in positions_, and the end of the last range
    std::vector<std::uint32_t> positions_;
    std::vector<std::uint8_t> wordCounts_;
};

/// Calls the visitor with each joined pair of neighbours that also counts as one word.
template <typename Visitor>
void forEachShortPair(std::span<const SongWord> words, Visitor visit) {
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        if (words[i].text.size() <= 2 || words[i + 1].text.size() <= 2)
            visit(words[i].text + words[i + 1].text);
}

} // namespace orvalen
