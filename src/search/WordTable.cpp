#include "search/WordTable.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>

namespace orvalen {
namespace {

/// The least similarity of a word to a longer word that starts with it. The similarity grows with the share
/// of the longer word.
constexpr float leastOfBeginning = 0.6F;
constexpr float leastRarity = 0.15F;

std::size_t hashOf(std::string_view word) {
    return std::hash<std::string_view>{}(word);
}

} // namespace

WordTable::WordTable(const LibraryIndex& index) {
    std::vector<std::uint32_t> words;
    std::vector<std::uint32_t> trackEnds;
    words.reserve(index.trackCount() * 8);
    trackEnds.reserve(index.trackCount());
    wordCounts_.reserve(index.trackCount());
    for (std::size_t position = 0; position < index.trackCount(); ++position) {
        const TrackView track = index.track(position);
        const std::size_t first = words.size();
        std::size_t count = 0;
        for (const std::string_view text : {track.artist, track.title}) {
            const std::vector<SongWord> songs = songWords(text);
            count += songs.size();
            for (const SongWord& word : songs)
                words.push_back(numberOf(word.text));
            forEachShortPair(songs, [&](const std::string& pair) { words.push_back(numberOf(pair)); });
        }
        const auto begin = words.begin() + static_cast<std::ptrdiff_t>(first);
        std::sort(begin, words.end());
        words.erase(std::unique(begin, words.end()), words.end());
        trackEnds.push_back(static_cast<std::uint32_t>(words.size()));
        wordCounts_.push_back(static_cast<std::uint8_t>(std::min<std::size_t>(count, 255)));
    }
    groupPositions(words, trackEnds);
}

std::uint32_t WordTable::numberOf(std::string_view word) {
    if (const auto known = find(word))
        return *known;
    const auto number = static_cast<std::uint32_t>(letterSets_.size());
    numbers_.insert(hashOf(word), number);
    texts_ += word;
    textStarts_.push_back(static_cast<std::uint32_t>(texts_.size()));
    const Letters letters = lettersOf(word);
    letterSets_.push_back(letters.set);
    letterCounts_.push_back(static_cast<std::uint8_t>(std::min<std::size_t>(letters.letters.size(), 255)));
    return number;
}

std::optional<std::uint32_t> WordTable::find(std::string_view word) const {
    return numbers_.find(hashOf(word), [&](std::uint32_t known) { return text(known) == word; });
}

void WordTable::groupPositions(const std::vector<std::uint32_t>& words,
                               const std::vector<std::uint32_t>& trackEnds) {
    starts_.resize(letterSets_.size() + 1);
    for (const std::uint32_t word : words)
        ++starts_[word + 1];
    const float all = std::log(static_cast<float>(trackEnds.size()) + 1);
    rarities_.reserve(letterSets_.size());
    for (std::size_t word = 0; word < letterSets_.size(); ++word) {
        rarities_.push_back(std::max(leastRarity, 1 - std::log(static_cast<float>(starts_[word + 1])) / all));
        starts_[word + 1] += starts_[word];
    }
    std::vector<std::uint32_t> places(starts_.begin(), starts_.end() - 1);
    positions_.resize(words.size());
    std::size_t i = 0;
    for (std::uint32_t position = 0; position < trackEnds.size(); ++position)
        for (; i < trackEnds[position]; ++i)
            positions_[places[words[i]]++] = position;
}

std::span<const std::uint32_t> WordTable::positionsOf(std::uint32_t word) const {
    return std::span(positions_).subspan(starts_[word], starts_[word + 1] - starts_[word]);
}

std::optional<float> WordTable::knownRarity(std::string_view word) const {
    const auto number = find(word);
    return number ? std::optional(rarities_[*number]) : std::nullopt;
}

std::vector<SimilarWord> WordTable::similarWords(std::string_view word, bool withBeginnings) const {
    const Letters wanted = lettersOf(word);
    const std::size_t length = wanted.letters.size();
    std::vector<SimilarWord> result;
    for (std::uint32_t number = 0; number < letterSets_.size(); ++number) {
        const std::size_t other = letterCounts_[number];
        const std::size_t limit = toleratedEdits(std::min(length, other));
        const bool mayResemble =
            (other > length ? other - length : length - other) <= limit &&
            static_cast<std::size_t>(std::popcount(letterSets_[number] ^ wanted.set)) <= 2 * limit;
        const bool mayBegin = withBeginnings && other > length && (wanted.set & ~letterSets_[number]) == 0;
        if (!mayResemble && !mayBegin)
            continue;
        float similarity = mayResemble ? orvalen::resemblance(wanted, lettersOf(text(number))) : 0;
        if (mayBegin && text(number).starts_with(word))
            similarity =
                std::max(similarity, leastOfBeginning + (1 - leastOfBeginning) * static_cast<float>(length) /
                                                            static_cast<float>(other));
        if (similarity > 0)
            result.push_back({number, similarity});
    }
    std::ranges::stable_sort(result, std::greater(), &SimilarWord::resemblance);
    return result;
}

} // namespace orvalen
