#include "library/LibraryFile.h"

#include "app/state/ContentView.h"
#include "core/Files.h"
#include "library/LibraryDocument.h"
#include "library/LibraryIndexState.h"
#include "library/MusicFolders.h"
#include "library/PlaylistDatabaseManager.h"
#include "library/SupportFolder.h"
#include "platform/Console.h"
#include "platform/Dialogs.h"
#include "platform/FolderAccess.h"
#include "platform/UserFolders.h"

#include <unistd.h>

namespace orvalen {
namespace {

constexpr std::string_view persistentName = "library.orvl";

void appendFolders(ContentView& view, const std::vector<Location>& folders) {
    if (folders.empty())
        return;
    view.musicFolderURLs.update([&](std::vector<Location>& listed) {
        for (const Location& folder : view.platform.folderAccess.startAll(folders))
            listed.push_back(folder);
    });
}

void applyFile(ContentView& view, const std::string& path) {
    if (auto bytes = readWholeFile(path))
        applyLibraryFile(view, std::move(*bytes));
}

} // namespace

Expected<void> writeLibraryFile(ContentView& view, const Location& destination) {
    Expected<void> written;
    writeLibraryDocument(view.trackDict.get(), view.database().wholePreferredMatches(),
                         view.musicFolderURLs.get(),
                         [&](std::string_view text) { written = writeWholeFile(destination.path, text); });
    return written;
}

void applyLibraryFile(ContentView& view, std::string bytes) {
    auto document = readLibraryDocument(std::move(bytes));
    if (!document)
        return;
    replaceIndex(view, std::move(document->index));
    if (document->preferred)
        view.database().replacePreferredMatches(*document->preferred);
    appendFolders(view, document->folders);
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

void loadPersistentLibrary(ContentView& view) {
    loadFolderBookmarks(view);
    if (const auto source = supportFileURL(view.platform.userFolders, persistentName))
        applyFile(view, source->path);
}

void backupScannedLibrary(ContentView& view) {
    SaveOptions options;
    options.proposedName = "scanned_library.orvl";
    options.types.extensions = {"orvl"};
    options.kind = FileKind::sessionOrLibrary;
    const auto destination = view.platform.dialogs.chooseToSave(options);
    if (!destination)
        return;
    Console& console = view.platform.console;
    if (const auto written = writeLibraryFile(view, *destination))
        console.line("✅ Library backup saved to " + destination->path);
    else
        console.line("❌ Failed to backup scanned library: " + written.error().description);
}

void loadScannedLibrary(ContentView& view) {
    OpenOptions options;
    options.types.extensions = {"orvl"};
    options.title = "Load Scanned Library";
    options.kind = FileKind::sessionOrLibrary;
    const auto chosen = view.platform.dialogs.chooseToOpen(options);
    if (!chosen.empty())
        loadScannedLibraryFile(view, chosen.front());
}

void loadScannedLibraryFile(ContentView& view, const Location& file) {
    applyFile(view, file.path);
}

void removeSavedLibrary(ContentView& view) {
    if (const auto file = supportFileURL(view.platform.userFolders, persistentName))
        ::unlink(file->path.c_str());
    clearIndex(view);
    view.database().replacePreferredMatches({});
}

} // namespace orvalen
