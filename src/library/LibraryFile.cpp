#include "library/LibraryFile.h"

#include "app/state/ContentView.h"
#include "core/AllTracks.h"
#include "core/Files.h"
#include "core/Text.h"
#include "library/EarlierChoices.h"
#include "library/LibraryDocument.h"
#include "library/LibraryIndexState.h"
#include "library/MusicFolders.h"
#include "library/PlaylistDatabaseManager.h"
#include "library/SupportFolder.h"
#include "platform/Console.h"
#include "platform/Dialogs.h"
#include "platform/FolderAccess.h"
#include "platform/UserFolders.h"

#include <algorithm>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace orvalen {
namespace {

constexpr std::string_view persistentName = "library.orvl";
constexpr std::string_view previousName = "library.previous.orvl";

/// Returns the number of tracks that look as if their tags could not be read.
std::size_t untaggedCount(const LibraryIndex& index) {
    return static_cast<std::size_t>(std::ranges::count_if(allTracks(index), [](const TrackView& track) {
        return track.artist == "Unknown" && track.title == bareName(track.path);
    }));
}

/// Replaces the index and, if the document has some, the preferred matches.
void applyTracksAndMatches(ContentView& view, LibraryDocument& document) {
    replaceIndex(view, std::move(document.index));
    if (!document.preferred)
        return;
    keepChoicesReplacedBy(view, *document.preferred);
    view.database().replacePreferredMatches(*document.preferred);
}

Expected<void> writeLibrary(ContentView& view, const Location& destination,
                            const std::optional<PreferredMatches>& preferred) {
    Expected<void> written;
    writeLibraryDocument(view.trackDict.get(), preferred, view.musicFolderURLs.get(),
                         [&](std::string_view text) { written = writeWholeFile(destination.path, text); });
    return written;
}

void appendFolders(ContentView& view, const std::vector<Location>& folders) {
    if (folders.empty())
        return;
    view.musicFolderURLs.update([&](std::vector<Location>& listed) {
        for (const Location& folder : view.platform.folderAccess.startAll(folders))
            listed.push_back(folder);
    });
}

/// Returns null if the file is not a readable library file.
std::unique_ptr<LibraryDocument> readLibrary(const std::string& path) {
    auto bytes = readWholeFile(path);
    auto document = bytes ? readLibraryDocument(std::move(*bytes)) : std::nullopt;
    return document ? std::make_unique<LibraryDocument>(*std::move(document)) : nullptr;
}

void applyDocument(ContentView& view, LibraryDocument& document) {
    applyTracksAndMatches(view, document);
    appendFolders(view, document.folders);
}

void copySupportFile(ContentView& view, std::string_view from, std::string_view to) {
    const auto source = supportFileURL(view.platform.userFolders, from);
    const auto copy = supportFileURL(view.platform.userFolders, to);
    if (!source || !copy)
        return;
    if (const auto bytes = readWholeFile(source->path))
        static_cast<void>(writeWholeFile(copy->path, *bytes));
}

} // namespace

Expected<void> writeLibraryFile(ContentView& view, const Location& destination) {
    return writeLibrary(view, destination, view.database().wholePreferredMatches());
}

void applyLibraryFile(ContentView& view, std::string bytes) {
    if (auto document = readLibraryDocument(std::move(bytes)))
        applyDocument(view, *document);
}

void keepLibraryOfBefore(ContentView& view, const ScanOutcome& scan) {
    const bool lostFiles =
        !scan.vanishedFolders.empty() ||
        (scan.unreadableFiles > 0 && scan.unreadableFiles > untaggedCount(view.trackDict.get()));
    // After a scan that lost a folder, the existing copy is better than "library.orvl".
    if (!lostFiles || !view.lastScan.get().vanishedFolders.empty())
        return;
    copySupportFile(view, persistentName, previousName);
}

void loadLibraryOfBefore(ContentView& view) {
    const auto file = supportFileURL(view.platform.userFolders, previousName);
    if (!file)
        return;
    const auto document = readLibrary(file->path);
    if (!document)
        return;
    applyTracksAndMatches(view, *document);
    copySupportFile(view, previousName, persistentName); // restored for the next start
    view.lastScan.set({});
}

void savePersistentLibrary(ContentView& view) {
    const auto destination = supportFileURL(view.platform.userFolders, persistentName);
    if (!destination)
        return;
    Console& console = view.platform.console;
    if (const auto written = writeLibraryFile(view, *destination))
        console.line("✅ Persistent library saved to " + destination->path);
    else
        console.line("❌ Failed to save persistent library: " + written.error().description);
    saveFolderBookmarks(view);
}

LibraryReading startReadingLibrary(const UserFolders& userFolders) {
    const auto source = supportFileURL(userFolders, persistentName);
    if (!source)
        return {};
    try {
        return std::async(std::launch::async, readLibrary, source->path);
    } catch (const std::system_error&) {
        return {};
    }
}

void loadPersistentLibrary(ContentView& view, LibraryReading reading) {
    loadFolderBookmarks(view);
    loadEarlierChoices(view);
    const auto source = supportFileURL(view.platform.userFolders, persistentName);
    if (!source)
        return;
    if (const auto document = reading.valid() ? reading.get() : readLibrary(source->path))
        applyDocument(view, *document);
}

void backupScannedLibrary(ContentView& view) {
    const auto destination = view.platform.dialogs.chooseToSave({.proposedName = "scanned_library.orvl",
                                                                 .types = {.extensions = {"orvl"}},
                                                                 .kind = FileKind::sessionOrLibrary});
    if (!destination)
        return;
    Console& console = view.platform.console;
    const auto preferred = view.database().wholePreferredMatches();
    if (const auto written = writeLibrary(view, *destination, preferred); !written) {
        console.line("❌ Failed to backup scanned library: " + written.error().description);
        return;
    }
    console.line("✅ Library backup saved to " + destination->path);
    if (!preferred)
        console.line("The preferred matches could not be read and are not in the backup.");
}

void loadScannedLibrary(ContentView& view) {
    const auto chosen = view.platform.dialogs.chooseToOpen({.types = {.extensions = {"orvl"}},
                                                            .title = "Load Scanned Library",
                                                            .kind = FileKind::sessionOrLibrary});
    if (!chosen.empty())
        loadScannedLibraryFile(view, chosen.front());
}

void loadScannedLibraryFile(ContentView& view, const Location& file) {
    if (const auto document = readLibrary(file.path))
        applyDocument(view, *document);
}

void removeSavedLibrary(ContentView& view) {
    if (const auto file = supportFileURL(view.platform.userFolders, persistentName))
        ::unlink(file->path.c_str());
    clearIndex(view);
    forgetAllEarlierChoices(view);
    view.database().replacePreferredMatches({});
}

} // namespace orvalen
