#include "Fuzz.h"
#include "core/Files.h"
#include "core/LibraryIndexBuilder.h"
#include "library/LibraryFile.h"
#include "library/LibraryIndexState.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

using namespace orvalen;
using fuzz::require;

namespace {

/// The state that a library file can change.
struct Library {
    std::vector<Track> tracks;
    PreferredMatches preferred;
    std::vector<Location> folders;

    explicit Library(test::TestPlatform& platform)
        : tracks(test::tracksOf(platform.view.trackDict.get())),
          preferred(platform.database().allPreferredMatches()), folders(platform.view.musicFolderURLs.get()) {
    }
    friend bool operator==(const Library&, const Library&) = default;
};

void clear(test::TestPlatform& platform) {
    clearIndex(platform.view);
    platform.database().replacePreferredMatches({});
    platform.view.musicFolderURLs.set({});
}

} // namespace

void fuzz::tryInput(std::string_view bytes) {
    static test::TestPlatform platform;
    static const LibraryIndex before =
        buildIndex(std::vector{test::track("Night Band", "Last Train Home", 123)});
    replaceIndex(platform.view, before);

    applyLibraryFile(platform.view, std::string(bytes));
    const Library read(platform);
    if (platform.view.trackDict.get().sharesTracksWith(before)) {
        require(read.preferred.empty() && read.folders.empty(), "a failed load changes nothing");
        return;
    }

    const Location copy{platform.support().path("copy.orvl")};
    require(writeLibraryFile(platform.view, copy).has_value(), "a library can be written");
    clear(platform);
    applyLibraryFile(platform.view, *readWholeFile(copy.path));
    require(Library(platform) == read, "the library reads back equal");
    clear(platform);
}
