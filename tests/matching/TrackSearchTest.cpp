#include "matching/TrackSearch.h"

#include "core/LibraryIndexBuilder.h"
#include "support/Builders.h"

#include <gmock/gmock.h>

namespace orvalen::test {
namespace {

using testing::IsEmpty;

/// A small library of tracks with similar names.
std::vector<Track> tracks() {
    return {
        track("Robyn", "Dancing On My Own"),
        track("Calum Scott", "Dancing On My Own"),
        track("Robyn", "Call Your Girlfriend"),
        track("ABBA", "Dancing Queen"),
        track("ABBA", "Waterloo"),
        track("Queen & David Bowie", "Under Pressure"),
        track("Queen", "Don't Stop Me Now"),
        track("Fleetwood Mac", "Don't Stop"),
        track("AC/DC", "Thunderstruck"),
        track("Beyoncé feat. JAY-Z", "Crazy In Love"),
        track("Beyoncé", "Halo"),
        track("The Foundations", "Build Me Up Buttercup"),
        track("Prince", "1999"),
        track("Michael Jackson", "Thriller"),
        track("Michael Jackson", "Thriller (Live)"),
        track("Кино", "Группа крови"),
    };
}

class TrackSearch : public testing::Test {
protected:
    std::vector<std::string> names(const std::vector<std::size_t>& positions) const {
        std::vector<std::string> result;
        for (const std::size_t position : positions) {
            const TrackView track = catalog.index().track(position);
            result.push_back(std::string(track.artist) + " - " + std::string(track.title));
        }
        return result;
    }
    std::string found(std::string_view text) const {
        const auto all = names(findTracks(catalog, text));
        return all.empty() ? "" : all.front();
    }
    std::vector<std::string> suggested(std::string artist, std::string title) const {
        return names(suggestTracks(catalog, {std::move(artist), std::move(title)}));
    }

    LibraryCatalog catalog{buildIndex(tracks())};
};

TEST_F(TrackSearch, FindsTheTrackThatIsMeantFirst) {
    struct Case {
        const char* quirk;
        const char* text;
        const char* track;
    };
    for (const Case& c : {
             Case{"any order", "own my dancing robyn", "Robyn - Dancing On My Own"},
             Case{"a misspelt artist", "robin dancing on my own", "Robyn - Dancing On My Own"},
             Case{"missing words", "scott dancing", "Calum Scott - Dancing On My Own"},
             Case{"too many words", "queen dont stop me now please", "Queen - Don't Stop Me Now"},
             Case{"unfinished words", "rob gir", "Robyn - Call Your Girlfriend"},
             Case{"an article too many", "the abba waterloo", "ABBA - Waterloo"},
             Case{"‘and’ for a sign", "queen and david bowie", "Queen & David Bowie - Under Pressure"},
             Case{"accents and a guest", "beyonce ft jay z crazy", "Beyoncé feat. JAY-Z - Crazy In Love"},
             Case{"joined words", "acdc", "AC/DC - Thunderstruck"},
             Case{"split words", "butter cup", "The Foundations - Build Me Up Buttercup"},
             Case{"the plain version before others", "thriller", "Michael Jackson - Thriller"},
             Case{"the version that is asked for", "thriller live", "Michael Jackson - Thriller (Live)"},
             Case{"another script", "група крови", "Кино - Группа крови"},
             Case{"another year", "1998", ""},
             Case{"no word", " !!! ", ""},
             Case{"an unknown word", "xylophone", ""},
         })
        EXPECT_EQ(found(c.text), c.track) << c.quirk;
}

TEST_F(TrackSearch, FindsEqualTracksOnceAndNoMoreThanAsked) {
    std::vector<Track> many = tracks();
    many.push_back(many.front());
    for (int i = 0; i < 100; ++i)
        many.push_back(track("Robyn", "Dancing Number " + std::to_string(i)));
    const LibraryCatalog large(buildIndex(many));
    EXPECT_EQ(findTracks(large, "robyn dancing").size(), mostFoundTracks);
    EXPECT_EQ(findTracks(large, "own my").size(), 2U);
    EXPECT_THAT(findTracks(LibraryCatalog(LibraryIndex()), "robyn"), IsEmpty());
}

TEST_F(TrackSearch, SuggestsWhatALineProbablyMeansAndNoOtherSong) {
    const struct {
        const char* artist;
        const char* title;
        std::vector<std::string> tracks;
    } cases[] = {
        {"Robin", "Dancing on my own", {"Robyn - Dancing On My Own", "Calum Scott - Dancing On My Own"}},
        {"Beyonce and JayZ", "Crasy in love", {"Beyoncé feat. JAY-Z - Crazy In Love"}},
        {"Waterlo", "Abba", {"ABBA - Waterloo"}}, // artist and title exchanged
        {"The Foundation", "Build me up butter cup", {"The Foundations - Build Me Up Buttercup"}},
        {"ABBA", "Halo", {}}, // one word is not enough for another artist
        {"Elvis", "Dancing on my table", {}},
        {"Robyn", "With Every Heartbeat", {}},
        {"Queen", "Somebody to love", {}},
        {"Michael Bublé", "Everything", {}},
        {"Prince", "1998", {}},
        {"!!!", "???", {}},
    };
    for (const auto& c : cases)
        EXPECT_EQ(suggested(c.artist, c.title), c.tracks) << c.artist << " - " << c.title;
    const LibraryCatalog twice(buildIndex(std::vector{track("Robyn", "Dancing On My Own", {}, "/a.mp3"),
                                                      track("Robyn", "Dancing On My Own", {}, "/b.mp3")}));
    EXPECT_EQ(suggestTracks(twice, {"Robin", "Dancing On My Own"}).size(), 1U) << "each name once";
    EXPECT_EQ(findTracks(twice, "Robin dancing").size(), 2U);
}

} // namespace
} // namespace orvalen::test
