#include "library/AudioMetadata.h"

#include "app/state/ContentView.h"
#include "core/Text.h"
#include "platform/Console.h"
#include "platform/Dialogs.h"
#include "platform/MainQueue.h"
#include "platform/MediaAsset.h"
#include "platform/WorkerQueue.h"

#include <algorithm>
#include <charconv>

namespace orvalen {
namespace {

/// Returns the text of the first item with the common key, or nullopt if no item has it or its text is
/// unreadable.
std::optional<std::string> firstText(const std::vector<MetadataItem>& items, std::string_view commonKey) {
    const auto item = std::find_if(items.begin(), items.end(),
                                   [&](const MetadataItem& each) { return each.commonKey == commonKey; });
    if (item == items.end() || !item->value)
        return std::nullopt;
    return *item->value;
}

void writeError(Console& console, std::string_view prefix, const Error& error) {
    console.line(std::string(prefix) + " " + error.description);
}

/// Adds the track to the row's candidates, selects it, and adds it to the library.
void attachTrack(ContentView& view, std::size_t position, const Track& track) {
    if (position >= view.matchedTracks.get().size())
        return;
    view.matchedTracks.update([&](std::vector<MatchedTrack>& rows) {
        MatchedTrack& row = rows[position];
        row.options.push_back(track);
        row.selectedTrack = track;
        row.found = true;
    });
    view.hasBrowsedFiles.set(true);
    view.trackDict.update([&](LibraryIndex& index) { fileTrack(index, track); });
}

Track namedAfter(const MatchedTrack& row) {
    return {row.title, row.artist, "", "", std::nullopt};
}

/// Reads the tempo on the tag queue, then attaches the file on the main thread.
void readAndAttach(ContentView& view, std::size_t row, Track track) {
    Platform& platform = view.platform;
    platform.tagQueue.post([&view, &platform, row, track = std::move(track)]() mutable {
        track.bpm = readTempoFrame(*platform.mediaAssets.open(track.path), platform.console,
                                   "Failed to load BPM from ID3 metadata:");
        platform.mainQueue.post([&view, row, track = std::move(track)] { attachTrack(view, row, track); });
    });
}

/// Returns the folders in which the dialog may open: those of the candidates, the selected track first, then
/// the first music folder.
std::vector<Location> foldersToBrowse(const ContentView& view, const MatchedTrack& row) {
    constexpr std::size_t enough = 10;
    std::vector<Location> folders;
    const auto addFolderOf = [&](const std::string& path) {
        const Location folder = locationOf(path.substr(0, path.rfind('/') + 1));
        if (folders.size() < enough && std::find(folders.begin(), folders.end(), folder) == folders.end())
            folders.push_back(folder);
    };
    if (row.selectedTrack)
        addFolderOf(row.selectedTrack->path);
    for (const Track& track : row.options)
        addFolderOf(track.path);
    if (!view.musicFolderURLs.get().empty()) {
        const Location& first = view.musicFolderURLs.get().front();
        folders.push_back(first);
        addFolderOf(first.path); // a music folder may be a single file
    }
    return folders;
}

} // namespace

Track readTrackMetadata(MediaAssets& assets, Console& console, const std::string& path, bool* unreadable) {
    Track track{std::string(bareName(path)), "Unknown", "", path, std::nullopt};
    const std::string prefix = "Failed to load metadata from " + std::string(lastPathComponent(path)) + ":";
    const auto asset = assets.open(path);
    const auto common = asset->commonMetadata();
    if (!common) {
        writeError(console, prefix, common.error());
        if (unreadable != nullptr)
            *unreadable = true;
        return track;
    }
    track.title = firstText(*common, "title").value_or(track.title);
    track.artist = firstText(*common, "artist").value_or(track.artist);
    track.bpm = readTempoFrame(*asset, console, prefix);
    return track;
}

std::optional<std::int64_t> readTempoFrame(MediaAsset& asset, Console& console,
                                           std::string_view failurePrefix) {
    const auto formats = asset.availableFormats();
    if (!formats) {
        writeError(console, failurePrefix, formats.error());
        return std::nullopt;
    }
    if (std::find(formats->begin(), formats->end(), id3Format) == formats->end())
        return std::nullopt;
    const auto items = asset.id3Metadata();
    if (!items) {
        writeError(console, failurePrefix, items.error());
        return std::nullopt;
    }
    const auto tempo = std::find_if(items->begin(), items->end(), [](const MetadataItem& item) {
        return item.identifier.find("TBPM") != std::string::npos;
    });
    if (tempo == items->end())
        return std::nullopt;
    if (!tempo->value) {
        writeError(console, failurePrefix, tempo->value.error());
        return std::nullopt;
    }
    return *tempo->value ? parseBPM(**tempo->value) : std::nullopt;
}

std::optional<std::int64_t> parseBPM(std::string_view text) {
    if (text.starts_with('+')) {
        text.remove_prefix(1);
        if (text.starts_with('-'))
            return std::nullopt;
    }
    std::int64_t number = 0;
    const char* end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end ? std::optional(number) : std::nullopt;
}

void attachBrowsedFile(ContentView& view, std::size_t row) {
    if (row >= view.matchedTracks.get().size())
        return;
    // The track gets the artist and title of the row whose button was pressed. If a match run ends in the
    // meantime, another row can be at this position and gets the file. The library still files the track
    // under the request for which the user chose it.
    const MatchedTrack& pressed = view.matchedTracks.get()[row];
    Track track = namedAfter(pressed);

    const auto chosen = view.platform.dialogs.chooseToOpen(
        {.types = {{TypeFamily::mp3Audio, TypeFamily::mpeg4Audio, TypeFamily::wavAudio, TypeFamily::movie},
                   {"aiff", "aif"}},
         .title = "Browse for file: " + pressed.artist + " – " + pressed.title,
         .openIn = foldersToBrowse(view, pressed)});
    if (chosen.empty())
        return;
    track.path = chosen.front().path;
    readAndAttach(view, row, std::move(track));
}

void attachFile(ContentView& view, std::size_t row, const std::string& path) {
    if (row >= view.matchedTracks.get().size())
        return;
    Track track = namedAfter(view.matchedTracks.get()[row]);
    track.path = path;
    readAndAttach(view, row, std::move(track));
}

} // namespace orvalen
