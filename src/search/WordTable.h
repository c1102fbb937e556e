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

/// A word of the table and how much it resembles the one that was looked for.
struct SimilarWord {
    std::uint32_t word = 0;
    float resemblance = 0;
};

/// The words of a library's artists and titles, and for each word the tracks that hold it. Where one of two
/// neighbours has at most two letters, both together count as a word too, so that ‘acdc’ finds ‘AC/DC’. Takes
/// about two microseconds a track to make, and about forty bytes a track. Immutable; any thread.
class WordTable {
public:
    explicit WordTable(const LibraryIndex& index);

    /// The words that the normalised word may have been meant for, the most similar first; with
    /// `withBeginnings` also those that begin with it.
    std::vector<SimilarWord> similarWords(std::string_view word, bool withBeginnings) const;
    /// The tracks that hold the word, in library order.
    std::span<const std::uint32_t> positionsOf(std::uint32_t word) const;
    /// How much a word tells about a track: 1 for a word of one track or of none, near 0 for a word of all.
    float rarity(std::string_view word) const { return knownRarity(word).value_or(1); }
    /// Nothing for a word of no track.
    std::optional<float> knownRarity(std::string_view word) const;
    float rarity(std::uint32_t word) const { return rarities_[word]; }
    /// How many words the track at the position has, at most 255.
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
    std::vector<std::uint32_t> starts_; ///< of each word's run in positions_, and the end of the last
    std::vector<std::uint32_t> positions_;
    std::vector<std::uint8_t> wordCounts_;
};

/// Calls the visitor with each pair of neighbours that count as one word too.
template <typename Visitor>
void forEachShortPair(std::span<const SongWord> words, Visitor visit) {
    for (std::size_t i = 0; i + 1 < words.size(); ++i)
        if (words[i].text.size() <= 2 || words[i + 1].text.size() <= 2)
            visit(words[i].text + words[i + 1].text);
}

} // namespace orvalen
