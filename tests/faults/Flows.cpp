#include "faults/Flows.h"

#include "core/LibraryIndexBuilder.h"
#include "export/ExportTargets.h"
#include "import/DjepImport.h"
#include "library/LibraryFile.h"
#include "library/LibraryIndexState.h"
#include "library/MusicFolders.h"
#include "session/SessionFiles.h"
#include "support/Builders.h"

#include <algorithm>
#include <system_error>

namespace orvalen::test {
namespace {

/// The same rows, identifiers and all, in every world.
const std::vector<MatchedTrack>& rows() {
    static const std::vector<MatchedTrack> all{
        row("Night Band", "Last Train Home", {track("Night Band", "Last Train Home", 123)}, true),
        row("Zoé", "Crème", {track("Zoé", "Crème")}, true)};
    return all;
}

std::string inSupport(World& world, const char* name) {
    return world.support().path(std::string("Orvalen/") + name);
}

std::function<std::string(World&)> supportFile(const char* name) {
    return [name](World& world) { return inSupport(world, name); };
}

std::function<std::string(World&)> chosenFile(const char* name) {
    return [name](World& world) { return world.chosen.path(name); };
}

constexpr const char* libraryText =
    R"({"tracks":[{"title":"Loaded","artist":"A","genre":"","path":"/l.mp3"}],"preferred":[{"key":"a loaded","path":"/l.mp3"}],"folders":["/Loaded"]})";
constexpr const char* sessionText =
    R"({"matchInput":"loaded","matchedTracks":[{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","title":"T","artist":"A","found":false,"options":[],"include":true}]})";
// "bookmark:/Loaded"
constexpr const char* foldersText = R"(["Ym9va21hcms6L0xvYWRlZA=="])";

std::vector<Flow> writes() {
    return {
        {"library after a scan",
         Access::plainWrite,
         supportFile("library.orvl"),
         [](World& world) { savePersistentLibrary(world.view); },
         {"✅ Persistent library saved to {}"},
         "❌ Failed to save persistent library: "},
        {"list of folders",
         Access::plainWrite,
         supportFile("folders.json"),
         [](World& world) { saveFolderBookmarks(world.view); },
         {},
         "Error saving folder bookmarks: "},
        {"library backup",
         Access::plainWrite,
         chosenFile("backup.orvl"),
         [](World& world) {
             world.dialogs.willSaveTo(world.chosen.path("backup.orvl"));
             backupScannedLibrary(world.view);
         },
         {"✅ Library backup saved to {}"},
         "❌ Failed to backup scanned library: "},
        {"automatic backup",
         Access::plainWrite,
         [](World& world) { return world.support().path("library_backup_"); },
         [](World& world) { world.database().autoBackupLibrary(world.view.trackDict.get()); },
         {"Auto-saved library backup to {}"},
         nullptr,
         {},
         true},
        {"session",
         Access::plainWrite,
         chosenFile("evening.orvs"),
         [](World& world) {
             world.dialogs.willSaveTo(world.chosen.path("evening.orvs"));
             saveSession(world.view);
         },
         {},
         "Failed to save session: "},
        {"session that saves itself",
         Access::plainWrite,
         supportFile("session.orvs"),
         [](World& world) { autoSaveSession(world.view); },
         {"Auto-saving session to {}"},
         "Auto-save session failed: "},
    };
}

Flow exportOf(const ExportTarget& target) {
    static std::vector<std::string> kept; // what the flows point to
    kept.reserve(2 * exportTargets().size());
    const auto keep = [](std::string text) { return kept.emplace_back(std::move(text)).c_str(); };
    Flow flow{keep("export " + std::string(target.value)),
              Access::atomicWrite,
              chosenFile("wedding.m3u"),
              [&target](World& world) {
                  world.view.selectedExportFormat.set(std::string(target.value));
                  world.dialogs.willSaveTo(world.chosen.path("wedding.m3u"));
                  exportPlaylist(world.view);
              },
              {"Exporting format: " + std::string(target.value)},
              keep(std::string(target.failureLine) + " ")};
    if (!target.successLine.empty())
        flow.success.push_back(std::string(target.successLine) + "{}");
    return flow;
}

std::vector<Flow> reads() {
    return {
        {"library at the start",
         Access::read,
         supportFile("library.orvl"),
         [](World& world) { loadPersistentLibrary(world.view); },
         {},
         nullptr,
         libraryText},
        {"list of folders at the start",
         Access::read,
         supportFile("folders.json"),
         [](World& world) { loadFolderBookmarks(world.view); },
         {},
         nullptr,
         foldersText},
        {"library chosen by the user",
         Access::read,
         chosenFile("old.orvl"),
         [](World& world) {
             world.dialogs.willOpen({world.chosen.path("old.orvl")});
             loadScannedLibrary(world.view);
         },
         {},
         nullptr,
         libraryText},
        {"session chosen by the user",
         Access::read,
         chosenFile("old.orvs"),
         [](World& world) {
             world.dialogs.willOpen({world.chosen.path("old.orvs")});
             loadSession(world.view);
         },
         {},
         "Failed to load session: ",
         sessionText},
        {"last session",
         Access::read,
         supportFile("session.orvs"),
         [](World& world) { loadLastSession(world.view); },
         {},
         nullptr,
         sessionText},
        {"DJEP export",
         Access::read,
         chosenFile("requests.csv"),
         [](World& world) {
             importDJEPCSV(world.view);
             world.dialogs.answerLater({world.chosen.path("requests.csv")});
         },
         {},
         "Failed to parse DJEP CSV: ",
         "kind,title,artist\nPlay,Loaded,A\n"},
    };
}

} // namespace

World::World() {
    support().makeFolder("Orvalen");
    database().replacePreferredMatches({{"night band last train home", "/kept.mp3"}});
    replaceIndex(view,
                 buildIndex(std::vector{track("Night Band", "Last Train Home", 123), track("Zoé", "Crème")}));
    view.musicFolderURLs.set({{"/Music"}});
    view.matchInput.set("kept");
    view.matchedTracks.set(rows());
}

std::string World::state() {
    std::string text = view.matchInput.get() + "; rows";
    for (const MatchedTrack& row : view.matchedTracks.get())
        text += ' ' + row.title + (row.include ? "+" : "-");
    text += "; tracks " + std::to_string(view.trackCount.get());
    const LibraryIndex& index = view.trackDict.get();
    for (std::size_t position = 0; position < index.trackCount(); ++position)
        text += ' ' + std::string(index.track(position).path);
    text += "; folders";
    for (const Location& folder : view.musicFolderURLs.get())
        text += ' ' + folder.path;
    text += "; choices";
    for (const auto& [key, path] : database().allPreferredMatches())
        text += ' ' + key + '=' + path;
    for (const auto* flag : {&view.showResultsPage, &view.isAutoSaving, &view.showExportSuccessBanner})
        text += flag->get() ? "; yes" : "; no";
    return text + "; input " + std::to_string(static_cast<int>(view.inputMode.get()));
}

const std::vector<Flow>& flows() {
    static const std::vector<Flow> all = [] {
        std::vector<Flow> list = writes();
        for (const ExportTarget& target : exportTargets())
            list.push_back(exportOf(target));
        for (const Flow& flow : reads())
            list.push_back(flow);
        return list;
    }();
    return all;
}

std::vector<std::string> failureLines(const Flow& flow, int error) {
    if (flow.saysAlways)
        return flow.success;
    std::vector<std::string> lines;
    if (flow.access == Access::atomicWrite)
        lines.push_back(flow.success.front()); // says beforehand what it sets out to do
    if (flow.failure)
        lines.push_back(flow.failure + std::generic_category().message(error));
    return lines;
}

std::string nameOfTest(const testing::TestParamInfo<Flow>& info) {
    std::string name = info.param.name;
    std::replace(name.begin(), name.end(), ' ', '_');
    return name;
}

} // namespace orvalen::test
