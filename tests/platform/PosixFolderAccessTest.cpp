#include "platform/system/PosixFolderAccess.h"

#include "support/TemporaryFolder.h"

#include <chrono>
#include <filesystem>
#include <future>
#include <gtest/gtest.h>
#include <thread>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;
using namespace std::string_view_literals;
using Clock = std::chrono::steady_clock;

TEST(PosixFolderAccess, StartsOnWhatIsThereAndCanBeRead) {
    TemporaryFolder folder;
    folder.write("Night Band – Intro.mp3");
    std::filesystem::create_symlink(folder.path("gone.mp3"), folder.path("dead link"));
    struct Case {
        std::string path;
        bool starts;
    };
    const Case cases[] = {{folder.path(), true},
                          {folder.path("Night Band – Intro.mp3"), true},
                          {folder.path("gone.mp3"), false},
                          {folder.path("dead link"), false},
                          {".", false}, // stands, but means another place in another run
                          {folder.path() + std::string("\0/else", 6), false}};
    PosixFolderAccess access;
    for (const auto& [path, starts] : cases)
        EXPECT_EQ(access.start({path}), starts) << path;
}

std::vector<std::string> paths(const std::vector<Location>& locations) {
    std::vector<std::string> result;
    for (const Location& location : locations)
        result.push_back(location.path);
    return result;
}

TEST(PosixFolderAccess, GrantsADriveThatDoesNotAnswerAndWaitsForItOnlyOnce) {
    std::promise<void> awake;
    std::shared_future<void> isAwake = awake.get_future().share();
    PosixFolderAccess access([isAwake](const std::string& path) {
        if (path.starts_with("/asleep"))
            isAwake.wait();
        return path == "/there";
    });
    std::vector<Location> locations{{"/there"}, {"/gone"}, {"relative"}};
    for (int i = 0; i < 5; ++i)
        locations.push_back({"/asleep/" + std::to_string(i)});
    const std::vector<std::string> expected{"/there",    "/asleep/0", "/asleep/1",
                                            "/asleep/2", "/asleep/3", "/asleep/4"};
    const auto start = Clock::now();
    EXPECT_EQ(paths(access.startAll(locations)), expected);
    EXPECT_LT(Clock::now() - start, 4s) << "one second for all";
    const auto again = Clock::now();
    EXPECT_EQ(paths(access.startAll(locations)), expected);
    EXPECT_TRUE(access.start({"/asleep/0"}));
    EXPECT_FALSE(access.start({"/gone"}));
    EXPECT_LT(Clock::now() - again, 900ms) << "waited once more";

    std::vector<Location> many;
    for (int i = 5; i < 20; ++i)
        many.push_back({"/asleep/" + std::to_string(i)});
    EXPECT_EQ(access.startAll(many), many) << "more than the threads that ask";
    awake.set_value();
    const auto limit = Clock::now() + 5s;
    while (access.start({"/asleep/0"}) && Clock::now() < limit)
        std::this_thread::yield();
    EXPECT_LT(Clock::now(), limit) << "an answer counts when it comes";
}

TEST(PosixFolderAccess, OnlyWhatIsMissingBelowAMountRootIsAway) {
    TemporaryFolder media;
    media.write("stick/there.mp3");
    struct Case {
        std::string path;
        bool away;
    };
    const Case cases[] = {{media.path("stick/Music"), true},
                          {media.path("other stick"), true},
                          {media.path("stick/there.mp3"), false},
                          {media.path() + "2/Music", false},
                          {media.path(), false},
                          {"/home/gone", false}};
    PosixFolderAccess access(MountRoots{{media.path()}});
    for (const auto& [path, away] : cases)
        EXPECT_EQ(access.isAway({path}), away) << path;
}

TEST(PosixFolderAccess, BookmarksBringAbsolutePathsBackAndNothingElse) {
    PosixFolderAccess access;
    for (const char* path : {"/", "/Music/Größe 日本", "/media/stick/that is not plugged in"}) {
        const auto bookmark = access.makeBookmark({path});
        ASSERT_TRUE(bookmark.has_value()) << path;
        const auto location = access.resolveBookmark(*bookmark);
        ASSERT_TRUE(location.has_value()) << path;
        EXPECT_EQ(location->path, path);
    }
    for (const std::string_view path : {""sv, "Music"sv, "./Music"sv, "/Music\0"sv, "/M\xFCsik"sv})
        EXPECT_FALSE(access.makeBookmark({std::string(path)}).has_value()) << path;
    const std::string mark = "orvalen-location-1:";
    ASSERT_EQ(access.makeBookmark({"/Music"}), mark + "/Music") << "an earlier version's are to be read";
    for (const std::string& bookmark :
         {std::string("/Music"), mark.substr(1) + "/Music", mark, mark + "Music", mark + "/M\xFCsik",
          std::string("orvalen-location-9:/Music")})
        EXPECT_FALSE(access.resolveBookmark(bookmark).has_value()) << bookmark;
}

} // namespace
} // namespace orvalen::test
