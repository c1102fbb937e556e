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
    std::size_t folders = 0;
};

Library libraryOf(test::TestPlatform& platform) {
    Library library;
    const LibraryIndex& index = platform.view.trackDict.get();
    for (std::size_t position = 0; position < index.trackCount(); ++position)
        library.tracks.push_back(index.track(position).toTrack());
    library.preferred = platform.database().allPreferredMatches();
    library.folders = platform.view.musicFolderURLs.get().size();
    return library;
}

bool sameChoices(const PreferredMatches& left, const PreferredMatches& right) {
    if (left.size() != right.size())
        return false;
    for (const auto& [key, path] : left) {
        const auto found = right.find(key);
        if (found == right.end() || found->second != path)
            return false;
    }
    return true;
}

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
    const Library read = libraryOf(platform);
    if (platform.view.trackDict.get().sharesTracksWith(before)) {
        require(read.preferred.empty() && read.folders == 0, "a failed load changes nothing");
        return;
    }

    const Location copy{platform.support().path("copy.orvl")};
    require(writeLibraryFile(platform.view, copy).has_value(), "a library can be written");
    clear(platform);
    applyLibraryFile(platform.view, *readWholeFile(copy.path));
    const Library again = libraryOf(platform);
    require(again.tracks == read.tracks, "the tracks read back equal");
    require(sameChoices(again.preferred, read.preferred), "the choices read back equal");
    require(again.folders == read.folders, "the folders read back");
    clear(platform);
}
