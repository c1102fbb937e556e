#include "platform/system/PosixFolderAccess.h"

#include "support/TemporaryFolder.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace orvalen::test {
namespace {

using namespace std::string_view_literals;

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

TEST(PosixFolderAccess, ABookmarkBringsItsLocationBackEvenWhileTheDiskIsAway) {
    PosixFolderAccess access;
    for (const char* path : {"/", "/Music/Größe 日本", "/media/stick/that is not plugged in"}) {
        const auto bookmark = access.makeBookmark({path});
        ASSERT_TRUE(bookmark.has_value()) << path;
        const auto location = access.resolveBookmark(*bookmark);
        ASSERT_TRUE(location.has_value()) << path;
        EXPECT_EQ(location->path, path);
    }
}

TEST(PosixFolderAccess, MakesNoBookmarkOfWhatIsNoAbsolutePath) {
    PosixFolderAccess access;
    for (const std::string_view path : {""sv, "Music"sv, "./Music"sv, "/Music\0"sv, "/M\xFCsik"sv})
        EXPECT_FALSE(access.makeBookmark({std::string(path)}).has_value()) << path;
}

TEST(PosixFolderAccess, ResolvesNoForeignOrDamagedBookmark) {
    PosixFolderAccess access;
    const std::string mark = "orvalen-location-1:";
    ASSERT_EQ(access.makeBookmark({"/Music"}), mark + "/Music") << "an earlier version's are to be read";
    for (const std::string& bookmark :
         {std::string("/Music"), mark.substr(1) + "/Music", mark, mark + "Music", mark + "/M\xFCsik",
          std::string("orvalen-location-9:/Music")})
        EXPECT_FALSE(access.resolveBookmark(bookmark).has_value()) << bookmark;
}

} // namespace
} // namespace orvalen::test
