#include "library/LibraryFile.h"

#include "app/ContentView.h"
#include "core/Files.h"
#include "core/JsonReading.h"
#include "library/LibraryIndexState.h"
#include "library/MusicFolders.h"
#include "library/PlaylistDatabaseManager.h"
#include "library/SupportFolder.h"
#include "platform/Console.h"
#include "platform/Dialogs.h"
#include "platform/FolderAccess.h"
#include "platform/UserFolders.h"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <unistd.h>

namespace orvalen {
namespace {

constexpr std::string_view persistentName = "library.orvl";

using Writer = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void writeText(Writer& writer, std::string_view text) {
    writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}

void writeMember(Writer& writer, std::string_view key, std::string_view text) {
    writeText(writer, key);
    writeText(writer, text);
}

void writeTrack(Writer& writer, const TrackView& track) {
    writer.StartObject();
    writeMember(writer, "title", track.title);
    writeMember(writer, "artist", track.artist);
    writeMember(writer, "genre", track.genre);
    writeMember(writer, "path", track.path);
    if (track.bpm) {
        writeText(writer, "bpm");
        writer.Int64(*track.bpm);
    }
    writer.EndObject();
}

std::optional<LibraryIndex> decodeTracks(const simdjson::dom::object& document) {
    const auto tracks = requiredArray(document, "tracks");
    if (!tracks)
        return std::nullopt;
    LibraryIndexBuilder builder;
    for (const simdjson::dom::element element : *tracks) {
        const auto track = decodeTrack(element);
        if (!track)
            return std::nullopt;
        builder.fileTrack(*track);
    }
    return builder.finish();
}

/// Nothing when the member is missing or is not an array of objects with nothing but texts.
std::optional<PreferredMatches> decodePreferred(const simdjson::dom::object& document) {
    const auto entries = requiredArray(document, "preferred");
    if (!entries)
        return std::nullopt;
    PreferredMatches matches;
    for (const simdjson::dom::element element : *entries) {
        simdjson::dom::object entry;
        if (element.get(entry))
            return std::nullopt;
        for (const auto member : entry)
            if (!member.value.is_string())
                return std::nullopt;
        const auto key = requiredText(entry, "key");
        const auto path = requiredText(entry, "path");
        if (key && path)
            matches.insert_or_assign(composed(*key), std::string(*path));
    }
    return matches;
}

std::vector<Location> decodeFolders(const simdjson::dom::object& document) {
    const auto paths = requiredArray(document, "folders");
    if (!paths)
        return {};
    std::vector<Location> folders;
    for (const simdjson::dom::element element : *paths) {
        std::string_view path;
        if (element.get(path))
            return {};
        folders.push_back(Location{std::string(path)});
    }
    return folders;
}

void appendFolders(ContentView& view, const std::vector<Location>& folders) {
    if (folders.empty())
        return;
    view.musicFolderURLs.update([&](std::vector<Location>& listed) {
        for (const Location& folder : folders)
            if (view.platform.folderAccess.start(folder))
                listed.push_back(folder);
    });
}

void applyFile(ContentView& view, const std::string& path) {
    if (const auto bytes = readWholeFile(path))
        applyLibraryFile(view, *bytes);
}

} // namespace

Expected<void> writeLibraryFile(ContentView& view, const Location& destination) {
    rapidjson::StringBuffer buffer;
    Writer writer(buffer);
    writer.SetIndent(' ', 2);
    writer.StartObject();
    writeText(writer, "tracks");
    writer.StartArray();
    const LibraryIndex& index = view.trackDict.get();
    for (std::size_t position = 0; position < index.trackCount(); ++position)
        writeTrack(writer, index.track(position));
    writer.EndArray();
    writeText(writer, "preferred");
    writer.StartArray();
    for (const auto& [key, path] : view.database().allPreferredMatches()) {
        writer.StartObject();
        writeMember(writer, "key", key);
        writeMember(writer, "path", path);
        writer.EndObject();
    }
    writer.EndArray();
    writeText(writer, "folders");
    writer.StartArray();
    for (const Location& folder : view.musicFolderURLs.get())
        writeText(writer, folder.path);
    writer.EndArray();
    writer.EndObject();
    return writeWholeFile(destination.path, {buffer.GetString(), buffer.GetSize()});
}

void applyLibraryFile(ContentView& view, std::string_view bytes) {
    simdjson::dom::parser parser;
    simdjson::dom::object document;
    if (parser.parse(bytes.data(), bytes.size()).get(document))
        return;
    auto index = decodeTracks(document);
    if (!index)
        return;
    replaceIndex(view, std::move(*index));
    if (const auto preferred = decodePreferred(document))
        view.database().replacePreferredMatches(*preferred);
    appendFolders(view, decodeFolders(document));
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
    const auto chosen = view.platform.dialogs.chooseToOpen(options);
    if (!chosen.empty())
        applyFile(view, chosen.front().path);
}

void removeSavedLibrary(ContentView& view) {
    if (const auto file = supportFileURL(view.platform.userFolders, persistentName))
        ::unlink(file->path.c_str());
    clearIndex(view);
    view.database().replacePreferredMatches({});
}

} // namespace orvalen
