#include "matching/MatchEngine.h"

#include "core/Keys.h"
#include "core/LibraryIndexBuilder.h"
#include "support/Builders.h"

#include <gtest/gtest.h>
#include <random>
#include <thread>

namespace orvalen::test {
namespace {

/// The plain implementation: compares all tracks for each strategy and skips repeated ones.
std::vector<std::size_t> plainOptions(const LibraryIndex& index, const Request& request) {
    const std::string key = libraryKey(request.artist, request.title);
    std::vector<std::size_t> options;
    const auto addWhere = [&](auto matches) {
        for (std::size_t position = 0; position < index.trackCount(); ++position) {
            const TrackView track = index.track(position);
            const auto isSame = [&](std::size_t other) { return index.track(other) == track; };
            if (matches(track) && std::none_of(options.begin(), options.end(), isSame))
                options.push_back(position);
        }
    };
    addWhere([&](const TrackView& track) { return libraryKey(track.artist, track.title) == key; });
    addWhere([&](const TrackView& track) { return fileNameKey(track.path) == key; });
    addWhere([&](const TrackView& track) { return containmentTest(track, request.artist, request.title); });
    return options;
}

/// Generates short texts of few letters, so that all cases occur: containment, equal keys from different
/// halves, empty halves, accents in both forms.
class SmallTexts {
public:
    explicit SmallTexts(std::uint32_t seed) : random_(seed) {}

    std::size_t below(std::size_t end) { return random_() % end; }
    std::string text(std::size_t most) {
        static const std::vector<std::string> pieces = {
            "a",      "b",       "A",      "ab",     "ba",     " ",      " ",      "-",
            "\u00E9", "e\u0301", "e",      "\u00D8", "\u00DF", "\u03A3", "\u65E5", "\u0915\u093E",
            "7",      "'",       "\u2013", "B\u00E4"};
        std::string result;
        for (std::size_t length = below(most + 1); length > 0; --length)
            result += pieces[below(pieces.size())];
        return result;
    }
    Track track() {
        const std::string name = below(3) == 0 ? text(3) + " - " + text(3) : text(4);
        const auto tempo = below(3) == 0 ? std::optional<std::int64_t>(below(2)) : std::nullopt;
        return Track{text(4), text(4), "", "/m/" + std::to_string(below(2)) + "/" + name + ".mp3", tempo};
    }

private:
    std::mt19937 random_;
};

/// Uses small libraries, and one with so many candidates that the search uses the titles first.
TEST(FindOptions, AgreesWithThePlainLoop) {
    std::size_t found = 0;
    std::size_t most = 0;
    for (std::uint32_t seed = 1; seed <= 26; ++seed) {
        const bool isLarge = seed == 26;
        SmallTexts texts(seed);
        LibraryIndexBuilder builder;
        std::vector<Track> filed;
        for (std::size_t count = isLarge ? 5000 : texts.below(150); count > 0; --count) {
            const bool again = !filed.empty() && texts.below(8) == 0;
            filed.push_back(again ? filed[texts.below(filed.size())] : texts.track());
            builder.fileTrack(filed.back());
        }
        const LibraryCatalog catalog(builder.finish());
        for (int line = 0; line < (isLarge ? 12 : 40); ++line) {
            const Request request{texts.text(isLarge ? 1 : 3), texts.text(isLarge ? 1 : 3)};
            const auto options = findOptions(catalog, request);
            ASSERT_EQ(options, plainOptions(catalog.index(), request))
                << "seed " << seed << ": '" << request.artist << "' - '" << request.title << "'";
            found += options.size();
            most = std::max(most, options.size());
        }
    }
    EXPECT_GT(found, 700U) << "the texts hardly ever meet";
    EXPECT_GT(most, 1024U) << "no line was broad enough for the search by titles";
    EXPECT_TRUE(findOptions(LibraryCatalog(LibraryIndex()), {"", ""}).empty());
}

TEST(Catalog, IsKeptWithTheTracksAndGoesWithThem) {
    LibraryIndex index = buildIndex(std::vector{track("Night", "Train")});
    EXPECT_EQ(findOptions(LibraryCatalog(index), {"night", "train"}).size(), 1U);
    fileTrack(index, track("Night", "Train", {}, "/m/later.mp3"));
    EXPECT_EQ(findOptions(LibraryCatalog(index), {"night", "train"}).size(), 2U);

    static int made;
    made = 0;
    static std::weak_ptr<const int> watched;
    const auto make = [](const LibraryIndex&) -> LibraryIndex::Cache {
        const auto value = std::make_shared<const int>(++made);
        watched = value;
        return value;
    };
    LibraryIndex shared = buildIndex(std::vector{track("A", "B")});
    const LibraryIndex copy = shared;
    EXPECT_EQ(shared.cached(make), copy.cached(make));
    EXPECT_EQ(made, 1);
    shared = LibraryIndex();
    EXPECT_FALSE(watched.expired());
    fileTrack(shared, track("C", "D"));
    shared.cached(make);
    EXPECT_EQ(made, 2);
    shared = LibraryIndex();
    EXPECT_TRUE(watched.expired()) << "the cache must not keep the tracks alive";
}

TEST(Catalog, CanBeMadeByManyThreadsAtOnce) {
    const LibraryIndex index = buildIndex(std::vector{track("Night", "Train"), track("Day", "Train")});
    std::vector<std::size_t> counts(4);
    {
        std::vector<std::jthread> threads;
        for (std::size_t& count : counts)
            threads.emplace_back([&count, index] {
                count = findOptions(LibraryCatalog(index), {"night", "train"}).size();
            });
    }
    EXPECT_EQ(counts, std::vector<std::size_t>(4, 1));
}

} // namespace
} // namespace orvalen::test
