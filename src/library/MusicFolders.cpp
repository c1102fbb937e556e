#include "library/MusicFolders.h"

#include "app/state/ContentView.h"
#include "core/Base64.h"
#include "core/Files.h"
#include "core/Json.h"
#include "library/SupportFolder.h"
#include "platform/Console.h"
#include "platform/Dialogs.h"
#include "platform/FolderAccess.h"
#include "platform/MainQueue.h"
#include "platform/UserFolders.h"

#include <algorithm>

namespace orvalen {
namespace {

constexpr std::string_view bookmarksName = "folders.json";

/// Returns the bookmarks in the file, or nullopt if it cannot be read or contains a text that is not Base64.
std::optional<std::vector<std::string>> readBookmarks(const std::string& path) {
    const auto bytes = readWholeFile(path);
    if (!bytes)
        return std::nullopt;
    const auto texts = decodeTexts(*bytes);
    if (!texts)
        return std::nullopt;
    std::vector<std::string> bookmarks;
    for (const std::string& text : *texts) {
        auto bookmark = fromBase64(text);
        if (!bookmark)
            return std::nullopt;
        bookmarks.push_back(std::move(*bookmark));
    }
    return bookmarks;
}

} // namespace

void addMusicLocations(ContentView& view) {
    const auto chosen = view.platform.dialogs.chooseToOpen(
        {.folders = true,
         .several = true,
         .types = {.extensions = {addedExtensions.begin(), addedExtensions.end()}},
         .prompt = "Add Music Folders or Audio Files"});
    if (!chosen.empty())
        addMusicLocations(view, chosen);
}

void addMusicLocations(ContentView& view, const std::vector<Location>& locations) {
    view.musicFolderURLs.update([&](std::vector<Location>& listed) {
        for (const Location& location : view.platform.folderAccess.startAll(locations))
            if (std::find(listed.begin(), listed.end(), location) == listed.end())
                listed.push_back(location);
    });
    saveFolderBookmarks(view);
}

void removeMusicLocation(ContentView& view, const Location& location) {
    // Copies `location`, which may refer to an element of the list.
    view.musicFolderURLs.update([location](std::vector<Location>& listed) { std::erase(listed, location); });
    saveFolderBookmarks(view);
}

void clearMusicLocations(ContentView& view) {
    view.musicFolderURLs.set({});
}

void saveFolderBookmarks(ContentView& view) {
    const auto file = supportFileURL(view.platform.userFolders, bookmarksName);
    if (!file)
        return;
    std::vector<std::string> texts;
    for (const Location& location : view.musicFolderURLs.get())
        if (const auto bookmark = view.platform.folderAccess.makeBookmark(location))
            texts.push_back(base64(*bookmark));
    if (const auto written = writeWholeFile(file->path, encodeTexts(texts)); !written)
        view.platform.console.line("Error saving folder bookmarks: " + written.error().description);
}

void loadFolderBookmarks(ContentView& view) {
    const auto file = supportFileURL(view.platform.userFolders, bookmarksName);
    if (!file)
        return;
    const auto bookmarks = readBookmarks(file->path);
    if (!bookmarks)
        return;
    FolderAccess& access = view.platform.folderAccess;
    std::vector<Location> resolved;
    for (const std::string& bookmark : *bookmarks)
        if (const auto location = access.resolveBookmark(bookmark))
            resolved.push_back(*location);
    const std::vector<Location> granted = access.startAll(resolved);
    std::erase_if(resolved, [&](const Location& location) {
        return std::ranges::find(granted, location) == granted.end() && !access.isAway(location);
    });
    view.platform.mainQueue.post(
        [&view, restored = std::move(resolved)] { view.musicFolderURLs.set(restored); });
}

} // namespace orvalen
