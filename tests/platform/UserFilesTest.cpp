#include "platform/system/PosixFolderAccess.h"

#include "platform/system/InstanceLock.h"
#include "platform/system/XdgUserFolders.h"
#include "support/Builders.h"
#include "support/TemporaryFolder.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <future>
#include <gtest/gtest.h>
#include <optional>
#include <pwd.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

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
                          {".", false}, // exists, but means another folder in another run
                          {folder.path() + std::string("\0/else", 6), false}};
    PosixFolderAccess access;
    for (const auto& [path, starts] : cases)
        EXPECT_EQ(access.start({path}), starts) << path;
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
    EXPECT_EQ(pathsOf(access.startAll(locations)), expected);
    EXPECT_LT(Clock::now() - start, 4s) << "one second for all";
    const auto again = Clock::now();
    EXPECT_EQ(pathsOf(access.startAll(locations)), expected);
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

void setVariable(const char* name, const char* value) {
    if (value != nullptr)
        ::setenv(name, value, 1);
    else
        ::unsetenv(name);
}

TEST(XdgUserFolders, PrefersTheDataFolderThenTheHomeThenTheUserList) {
    const passwd* user = ::getpwuid(::getuid());
    ASSERT_NE(user, nullptr);
    struct Case {
        const char* dataHome;
        const char* home;
        std::string expected;
    };
    const Case cases[] = {
        {"/data/dj", "/home/dj", "/data/dj"},
        {"/data/dj//", "/home/dj", "/data/dj"},
        {nullptr, "/home/dj/", "/home/dj/.local/share"},
        {"", "/home/dj", "/home/dj/.local/share"},
        {"data/dj", "/home/dj", "/home/dj/.local/share"}, // relative paths are ignored
        {nullptr, "dj", std::string(user->pw_dir) + "/.local/share"},
    };
    for (const auto& [dataHome, home, expected] : cases) {
        setVariable("XDG_DATA_HOME", dataHome);
        setVariable("HOME", home);
        EXPECT_EQ(XdgUserFolders().applicationSupport(), expected) << home;
    }
    setVariable("XDG_DATA_HOME", nullptr);
    setVariable("HOME", user->pw_dir);
}

TEST(InstanceLock, IsFreeAgainWhenItsOwnerIsKilled) {
    const TemporaryFolder folder;
    const std::string file = folder.path("lock");
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t owner = ::fork();
    if (owner == 0) {
        const InstanceLock lock(file);
        const char state = lock.heldByAnother() ? 'h' : 'f';
        while (::write(ready[1], &state, 1) == 1)
            ::pause();
    }
    char state = 0;
    ASSERT_EQ(::read(ready[0], &state, 1), 1);
    EXPECT_EQ(state, 'f');
    EXPECT_TRUE(InstanceLock(file).heldByAnother());
    ::kill(owner, SIGKILL);
    ::waitpid(owner, nullptr, 0);
    EXPECT_FALSE(InstanceLock(file).heldByAnother());
    EXPECT_FALSE(InstanceLock("/proc/missing/lock").heldByAnother()) << "no file can be made";
    ::close(ready[0]);
    ::close(ready[1]);
}

} // namespace
} // namespace orvalen::test
