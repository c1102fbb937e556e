#include "matching/TrackSearch.h"

#include "search/SongSimilarity.h"
#include "search/SongWords.h"
#include "search/WordTable.h"

#include <algorithm>
#include <set>

namespace orvalen {
namespace {

/// The number of best tracks that are compared in detail.
constexpr std::size_t closelyCompared = 400;
/// Among tracks with the same wanted words, those with fewer other words come first.
constexpr float costOfWord = 0.01F;
/// The least share of the wanted words that a found track must match.
constexpr float leastFound = 0.2F;
constexpr float costOfLeftWords = 0.3F;

struct Scored {
    float score = 0;
    std::size_t position = 0;

    /// The better score comes first; equal scores keep library order.
    bool operator<(const Scored& other) const {
        return score != other.score ? score > other.score : position < other.position;
    }
};

/// Keeps the best `most`, sorted.
void keepBest(std::vector<Scored>& tracks, std::size_t most) {
    const auto end = tracks.begin() + static_cast<std::ptrdiff_t>(std::min(most, tracks.size()));
    std::partial_sort(tracks.begin(), end, tracks.end());
    tracks.erase(end, tracks.end());
}

/// Scores each track by the words that it has in common with the wanted words.
class RoughSearch {
public:
    explicit RoughSearch(const WordTable& table, bool withBeginnings)
        : table_(table), withBeginnings_(withBeginnings), scores_(table.trackCount()),
          lastWords_(table.trackCount()) {}

    /// Adds the word's weight to the tracks with similar words. For each track, only its most similar word
    /// counts.
    void add(std::string_view word, float weight) {
        const std::vector<SimilarWord> similar = table_.similarWords(word, withBeginnings_);
        if (++wordNumber_ == 0) { // after 255 words, all marks are reset
            std::ranges::fill(lastWords_, 0);
            wordNumber_ = 1;
        }
        const std::optional<float> rarity = table_.knownRarity(word);
        for (const SimilarWord& found : similar) {
            const float gain = weight * found.resemblance * rarity.value_or(table_.rarity(found.word));
            for (const std::uint32_t position : table_.positionsOf(found.word))
                if (lastWords_[position] != wordNumber_) {
                    lastWords_[position] = wordNumber_;
                    scores_[position] += gain;
                }
        }
    }

    void addAll(const std::vector<SongWord>& words) {
        for (const SongWord& word : words)
            if (word.role != WordRole::article || words.size() == 1)
                add(word.text, word.role == WordRole::plain ? 1 : 0.5F);
        for (std::size_t i = 0; i + 1 < words.size(); ++i)
            add(words[i].text + words[i + 1].text, 1);
    }

    std::vector<Scored> best() const {
        std::vector<Scored> tracks;
        for (std::size_t position = 0; position < scores_.size(); ++position)
            if (scores_[position] > 0)
                tracks.push_back(
                    {scores_[position] - costOfWord * static_cast<float>(table_.wordCount(position)),
                     position});
        if (tracks.size() > closelyCompared) {
            std::nth_element(tracks.begin(), tracks.begin() + closelyCompared, tracks.end());
            tracks.resize(closelyCompared);
        }
        return tracks;
    }

private:
    const WordTable& table_;
    bool withBeginnings_;
    std::vector<float> scores_;
    std::vector<std::uint8_t> lastWords_; ///< per track, the last wanted word that changed its score
    std::uint8_t wordNumber_ = 0;
};

/// Scores each track in detail, drops tracks with score 0, sorts, and keeps each file once. A file can be in
/// the index twice: attaching it to a row adds it under the row's artist and title too.
template <typename Score>
std::vector<Scored> compared(const LibraryCatalog& catalog, const std::vector<Scored>& rough, Score score) {
    std::vector<Scored> tracks;
    for (const Scored& track : rough) {
        const Scored close{score(catalog.index().track(track.position)), track.position};
        if (close.score > 0)
            tracks.push_back(close);
    }
    std::sort(tracks.begin(), tracks.end());
    std::set<std::string_view> paths;
    std::erase_if(tracks, [&](const Scored& track) {
        return !paths.insert(catalog.index().track(track.position).path).second;
    });
    return tracks;
}

std::vector<SongWord> wordsOf(std::string_view artist, std::string_view title) {
    std::vector<SongWord> words = songWords(artist);
    std::ranges::move(songWords(title), std::back_inserter(words));
    return words;
}

} // namespace

std::vector<std::size_t> findTracks(const LibraryCatalog& catalog, std::string_view text, std::size_t most) {
    const WordTable& table = catalog.words();
    std::vector<SongWord> wanted = songWords(text);
    for (SongWord& word : wanted) // a typed word counts fully, wherever it is in the file's texts
        if (word.role == WordRole::aside || word.role == WordRole::guest)
            word.role = WordRole::plain;
    RoughSearch search(table, true);
    search.addAll(wanted);
    const WeighedWords words = weigh(wanted, table);
    std::vector<Scored> tracks = compared(catalog, search.best(), [&](const TrackView& track) {
        const Overlap overlap = overlapOf(words, weigh(wordsOf(track.artist, track.title), table), true);
        return overlap.share(0) < leastFound ? 0 : overlap.share(costOfLeftWords);
    });
    keepBest(tracks, most);
    std::vector<std::size_t> positions(tracks.size());
    std::ranges::transform(tracks, positions.begin(), &Scored::position);
    return positions;
}

std::vector<std::size_t> suggestTracks(const LibraryCatalog& catalog, const Request& request,
                                       std::size_t most) {
    const WordTable& table = catalog.words();
    RoughSearch search(table, false);
    search.addAll(wordsOf(request.artist, request.title));
    const SongParts wanted = partsOf(request.artist, request.title, table);
    std::vector<std::size_t> positions;
    std::set<std::pair<std::string_view, std::string_view>> names;
    for (const Scored& track : compared(catalog, search.best(), [&](const TrackView& file) {
             return likelihood(wanted, partsOf(file.artist, file.title, table));
         })) {
        const TrackView file = catalog.index().track(track.position);
        if (positions.size() < most && names.insert({file.artist, file.title}).second)
            positions.push_back(track.position);
    }
    return positions;
}

} // namespace orvalen
