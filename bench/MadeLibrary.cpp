#include "MadeLibrary.h"

#include "core/LibraryIndexBuilder.h"

#include <array>
#include <cmath>

namespace orvalen::test {
namespace {

constexpr std::size_t vocabularySize = 20'000;
constexpr std::array<const char*, 8> genres = {"House",   "Techno", "Pop",         "Rock",
                                               "Hip-Hop", "Soul",   "Drum & Bass", "Schlager"};

std::string capitalised(std::string word) {
    if (word[0] >= 'a' && word[0] <= 'z')
        word[0] = static_cast<char>(word[0] - 'a' + 'A');
    return word;
}

} // namespace

MadeLibrary::MadeLibrary(std::uint32_t seed) : random_(seed) {
    static constexpr std::array<const char*, 20> starts = {"b",  "d",  "f",  "g",  "h", "k", "l",
                                                           "m",  "n",  "p",  "r",  "s", "t", "v",
                                                           "st", "tr", "bl", "ch", "",  "sh"};
    static constexpr std::array<const char*, 16> vowels = {
        "a", "e", "i", "o", "u", "ea", "ou", "y", "a", "e", "i", "o", "ai", "ee", "\u00E9", "\u00FC"};
    static constexpr std::array<const char*, 12> ends = {"",  "",  "n",  "r",  "s",  "t",
                                                         "l", "m", "ng", "ck", "nd", "st"};
    vocabulary_ = {"the", "you", "love", "a", "me", "to", "in", "of", "i", "my"};
    while (vocabulary_.size() < vocabularySize) {
        std::string made;
        for (std::size_t syllables = 1 + below(3); syllables > 0; --syllables)
            made.append(starts[below(starts.size())])
                .append(vowels[skewedBelow(vowels.size())])
                .append(ends[below(ends.size())]);
        vocabulary_.push_back(std::move(made));
    }
}

std::size_t MadeLibrary::below(std::size_t end) {
    return random_() % end;
}

std::size_t MadeLibrary::skewedBelow(std::size_t end) {
    const double unit = static_cast<double>(random_()) / 4294967296.0;
    const double value = std::pow(static_cast<double>(end) + 1, unit) - 1;
    return std::min(static_cast<std::size_t>(value), end - 1);
}

std::string MadeLibrary::word() {
    return capitalised(vocabulary_[skewedBelow(vocabulary_.size())]);
}

std::string MadeLibrary::words(std::size_t least, std::size_t most) {
    std::string text = word();
    for (std::size_t more = least - 1 + below(most - least + 1); more > 0; --more)
        text.append(1, ' ').append(word());
    return text;
}

/// Returns a name whose last word is any word with equal probability, so that most names are different.
std::string MadeLibrary::name() {
    std::string text = capitalised(vocabulary_[below(vocabulary_.size())]);
    for (std::size_t more = below(3); more > 0; --more)
        text = word() + " " + text;
    return text;
}

void MadeLibrary::startAlbum() {
    if (leftInGenre_ == 0) {
        genre_ = genres[below(genres.size())];
        leftInGenre_ = 200 + below(2000);
    }
    --leftInGenre_;
    // 80 % of the albums are by a new artist, the others by an artist who has an album already.
    if (artists_.empty() || below(10) < 8) {
        artist_ = artists_.size();
        artists_.push_back(name());
    } else {
        artist_ = skewedBelow(artists_.size());
    }
    folder_ = "/home/dj/Music/" + genre_ + "/" + artists_[artist_] + "/" + words(1, 4) + " (";
    folder_ += std::to_string(1960 + below(65)) + ")/";
    trackNumber_ = 0;
    leftOnAlbum_ = 1 + below(12);
}

Track MadeLibrary::nextTrack() {
    if (leftOnAlbum_ == 0)
        startAlbum();
    --leftOnAlbum_;
    ++trackNumber_;
    Track track;
    track.artist = artists_[artist_];
    track.title = words(1, 5);
    if (below(4) == 0)
        track.title += " (Extended Mix)";
    track.genre = genre_;
    track.path = folder_ + (trackNumber_ < 10 ? "0" : "") + std::to_string(trackNumber_) + " " +
                 track.artist + " - " + track.title + ".mp3";
    if (below(3) != 0)
        track.bpm = 90 + static_cast<std::int64_t>(below(60));
    if (made_++ % 64 == 0)
        kept_.push_back(track);
    return track;
}

LibraryIndex MadeLibrary::index(std::size_t tracks) {
    LibraryIndexBuilder builder;
    for (std::size_t i = 0; i < tracks; ++i)
        builder.fileTrack(nextTrack());
    return builder.finish();
}

std::vector<std::string> MadeLibrary::wantedLines(std::size_t count) {
    std::vector<std::string> lines;
    for (std::size_t i = 0; i < count; ++i) {
        const Track& track = kept_[below(kept_.size())];
        switch (below(4)) {
        case 0:
            lines.push_back(track.artist + " - " + track.title);
            break;
        case 1: // the title without its last word
            lines.push_back(track.artist + " \u2013 " + track.title.substr(0, track.title.rfind(' ')));
            break;
        case 2:
            lines.push_back(track.artist + " - " + words(1, 3));
            break;
        default:
            lines.push_back(name() + " - " + words(1, 4));
        }
    }
    return lines;
}

} // namespace orvalen::test
