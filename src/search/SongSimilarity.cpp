#include "search/SongSimilarity.h"

#include <algorithm>

namespace orvalen {
namespace {

constexpr float asideWeight = 0.35F;
constexpr float guestWeight = 0.25F;
constexpr float articleWeight = 0.1F;

/// The least similarity of title and artist for a track to be proposed.
constexpr float leastTitle = 0.6F;
constexpr float leastArtist = 0.5F;
/// If the artist is at least this similar, the wanted title may omit more of the track's title.
constexpr float clearArtist = 0.8F;
/// The least similarity of both if artist and title are exchanged.
constexpr float leastExchanged = 0.75F;
constexpr float titleShare = 0.6F;
/// A track with this similar a title is proposed even if the artist differs, because lists can name the wrong
/// artist. The wanted title must have several words.
constexpr float sameTitle = 0.95F;
constexpr std::size_t wordsOfTellingTitle = 3;

float weightOf(WordRole role) {
    switch (role) {
    case WordRole::plain:
        return 1;
    case WordRole::aside:
        return asideWeight;
    case WordRole::guest:
        return guestWeight;
    case WordRole::article:
        return articleWeight;
    }
    return 1;
}

float sumOfWeights(const WeighedWords& words) {
    float sum = 0;
    for (const WeighedWord& word : words)
        sum += word.weight;
    return sum;
}

/// Pairs each wanted word with a word of the other text. Each word is used once.
class Matcher {
public:
    Matcher(const WeighedWords& wanted, const WeighedWords& other, bool withBeginnings)
        : wanted_(wanted), other_(other), withBeginnings_(withBeginnings), isMatched_(wanted.size()),
          isTaken_(other.size()) {}

    Overlap run() {
        Overlap result;
        result.wanted = sumOfWeights(wanted_);
        result.matched = equalWords() + pairs() + similarWords();
        for (std::size_t i = 0; i < other_.size(); ++i)
            if (!isTaken_[i])
                result.left += other_[i].weight;
        return result;
    }

private:
    float equalWords() {
        float sum = 0;
        for (std::size_t i = 0; i < wanted_.size(); ++i)
            for (std::size_t k = 0; k < other_.size() && !isMatched_[i]; ++k)
                if (!isTaken_[k] && wanted_[i].text == other_[k].text)
                    sum += take(i, k);
        return sum;
    }

    /// Pairs two neighbouring words with one word that joins them, in both directions.
    float pairs() {
        float sum = 0;
        for (std::size_t i = 0; i + 1 < wanted_.size(); ++i)
            if (!isMatched_[i] && !isMatched_[i + 1])
                sum += matchPairOfWanted(i);
        for (std::size_t k = 0; k + 1 < other_.size(); ++k)
            if (!isTaken_[k] && !isTaken_[k + 1])
                sum += matchPairOfOther(k);
        return sum;
    }

    float matchPairOfWanted(std::size_t i) {
        const Letters joined = lettersOf(wanted_[i].text + wanted_[i + 1].text);
        for (std::size_t k = 0; k < other_.size(); ++k) {
            const float similarity = isTaken_[k] ? 0 : resemblance(joined, other_[k].letters);
            if (similarity > 0.7F) {
                isMatched_[i + 1] = true;
                return (take(i, k) + wanted_[i + 1].weight) * similarity;
            }
        }
        return 0;
    }

    float matchPairOfOther(std::size_t k) {
        const Letters joined = lettersOf(other_[k].text + other_[k + 1].text);
        for (std::size_t i = 0; i < wanted_.size(); ++i) {
            const float similarity = isMatched_[i] ? 0 : resemblance(wanted_[i].letters, joined);
            if (similarity > 0.7F) {
                isTaken_[k + 1] = true;
                return take(i, k) * similarity;
            }
        }
        return 0;
    }

    float similarWords() {
        float sum = 0;
        for (std::size_t i = 0; i < wanted_.size(); ++i) {
            if (isMatched_[i])
                continue;
            float best = 0;
            std::size_t place = 0;
            for (std::size_t k = 0; k < other_.size(); ++k) {
                const float similarity = isTaken_[k] ? 0 : similarityOf(wanted_[i], other_[k]);
                if (similarity > best) {
                    best = similarity;
                    place = k;
                }
            }
            if (best > 0)
                sum += take(i, place) * best;
        }
        return sum;
    }

    float similarityOf(const WeighedWord& wanted, const WeighedWord& other) const {
        float similarity = resemblance(wanted.letters, other.letters);
        if (withBeginnings_ && other.text.starts_with(wanted.text))
            similarity = std::max(similarity, 0.6F + 0.4F * static_cast<float>(wanted.text.size()) /
                                                         static_cast<float>(other.text.size()));
        return similarity;
    }

    /// Marks both words as used. Returns the weight of the wanted word.
    float take(std::size_t wanted, std::size_t other) {
        isMatched_[wanted] = true;
        isTaken_[other] = true;
        return wanted_[wanted].weight;
    }

    const WeighedWords& wanted_;
    const WeighedWords& other_;
    bool withBeginnings_;
    std::vector<bool> isMatched_;
    std::vector<bool> isTaken_;
};

/// Takes the better direction, because either artist may contain the other: ‘Queen’ and ‘Queen & David
/// Bowie’.
float artistLikelihood(const WeighedWords& wanted, const WeighedWords& file) {
    const Overlap there = overlapOf(wanted, file, false);
    const Overlap back = overlapOf(file, wanted, false);
    return std::max(there.share(0), back.share(0));
}

float titleLikelihood(const WeighedWords& wanted, const WeighedWords& file, float artist) {
    return overlapOf(wanted, file, false).share(artist >= clearArtist ? 0.2F : 0.5F);
}

} // namespace

WeighedWords weigh(const std::vector<SongWord>& words, const WordTable& table) {
    WeighedWords result;
    result.reserve(words.size());
    for (const SongWord& word : words)
        result.push_back({word.text, lettersOf(word.text), weightOf(word.role) * table.rarity(word.text)});
    return result;
}

float Overlap::share(float costOfLeftWords) const {
    const float all = wanted + costOfLeftWords * left;
    return all > 0 ? matched / all : 0;
}

Overlap overlapOf(const WeighedWords& wanted, const WeighedWords& other, bool withBeginnings) {
    return Matcher(wanted, other, withBeginnings).run();
}

SongParts partsOf(std::string_view artist, std::string_view title, const WordTable& table) {
    std::vector<SongWord> artistWords = songWords(artist);
    std::vector<SongWord> titleWords;
    for (SongWord& word : songWords(title))
        (word.role == WordRole::guest ? artistWords : titleWords).push_back(std::move(word));
    return {weigh(artistWords, table), weigh(titleWords, table)};
}

float likelihood(const SongParts& wanted, const SongParts& file) {
    const float artist = artistLikelihood(wanted.artist, file.artist);
    const float title = titleLikelihood(wanted.title, file.title, artist);
    if (title >= leastTitle && artist >= leastArtist)
        return titleShare * title + (1 - titleShare) * artist;
    if (title >= sameTitle && wanted.title.size() >= wordsOfTellingTitle)
        return titleShare * title;
    const float exchangedArtist = artistLikelihood(wanted.title, file.artist);
    const float exchangedTitle = titleLikelihood(wanted.artist, file.title, 0);
    if (exchangedTitle >= leastExchanged && exchangedArtist >= leastExchanged)
        return titleShare * exchangedTitle + (1 - titleShare) * exchangedArtist;
    return 0;
}

} // namespace orvalen
