#include "faults/Flows.h"

#include "core/Files.h"
#include "core/LibraryIndexBuilder.h"
#include "export/ExportTargets.h"
#include "import/DjepImport.h"
#include "library/LibraryFile.h"
#include "library/LibraryIndexState.h"
#include "library/MusicFolders.h"
#include "session/SessionFiles.h"
#include "support/Builders.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace orvalen::test {
namespace {

namespace fs = std::filesystem;

/// The same rows, with the same identifiers, in every program.
const std::vector<MatchedTrack>& rows() {
    static const std::vector<MatchedTrack> all{
        row("Night Band", "Last Train Home", {track("Night Band", "Last Train Home", 123)}, true),
        row("Zoé", "Crème", {track("Zoé", "Crème")}, true)};
    return all;
}

std::function<std::string(PreparedProgram&)> supportFile(std::string name) {
    return [name = std::move(name)](PreparedProgram& program) { return program.support().path(name); };
}

std::function<std::string(PreparedProgram&)> userFile(std::string name) {
    return [name = std::move(name)](PreparedProgram& program) { return program.userFolder.path(name); };
}

using Operation = void (*)(ContentView&);

/// Runs the operation and answers its dialog with this file.
std::function<void(PreparedProgram&)> saving(Operation operation, std::string name) {
    return [operation, name = std::move(name)](PreparedProgram& program) {
        program.dialogs.willSaveTo(program.userFolder.path(name));
        operation(program.view);
    };
}

std::function<void(PreparedProgram&)> opening(Operation operation, std::string name) {
    return [operation, name = std::move(name)](PreparedProgram& program) {
        program.dialogs.willOpen({program.userFolder.path(name)});
        operation(program.view);
    };
}

std::function<void(PreparedProgram&)> running(Operation operation) {
    return [operation](PreparedProgram& program) { operation(program.view); };
}

constexpr const char* libraryText =
    R"({"tracks":[{"title":"Loaded","artist":"A","genre":"","path":"/l.mp3"}],"preferred":[{"key":"a loaded","path":"/l.mp3"}],"folders":["/Loaded"]})";
constexpr const char* sessionText =
    R"({"matchInput":"loaded","matchedTracks":[{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","title":"T","artist":"A","found":false,"options":[],"include":true}]})";
// "bookmark:/Loaded"
constexpr const char* foldersText = R"(["Ym9va21hcms6L0xvYWRlZA=="])";

Flow exportOf(const ExportTarget& target) {
    const std::string value(target.value);
    Flow flow{target.value.data(),
              Access::writeAtomically,
              userFile("wedding.m3u"),
              [value](PreparedProgram& program) {
                  program.view.selectedExportFormat.set(value);
                  program.dialogs.willSaveTo(program.userFolder.path("wedding.m3u"));
                  exportPlaylist(program.view);
              },
              {"Exporting format: " + value},
              std::string(target.failureLine) + " "};
    if (!target.successLine.empty())
        flow.success.push_back(std::string(target.successLine) + "{}");
    return flow;
}

} // namespace

PreparedProgram::PreparedProgram() {
    support().makeFolder("Orvalen");
    database().replacePreferredMatches({{"night band last train home", "/kept.mp3"}});
    replaceIndex(view,
                 buildIndex(std::vector{track("Night Band", "Last Train Home", 123), track("Zoé", "Crème")}));
    view.musicFolderURLs.set({{"/Music"}});
    view.matchInput.set("kept");
    view.matchedTracks.set(rows());
}

std::string PreparedProgram::state() {
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
    text += "; preferred";
    for (const auto& [key, path] : database().allPreferredMatches())
        text += ' ' + key + '=' + path;
    for (const auto* flag : {&view.showResultsPage, &view.isAutoSaving, &view.showExportSuccessBanner})
        text += flag->get() ? "; yes" : "; no";
    return text + "; input " + std::to_string(static_cast<int>(view.inputMode.get()));
}

std::vector<Flow> flows() {
    using enum Access;
    std::vector<Flow> all{
        {"library file",
         writeInPlace,
         supportFile("Orvalen/library.orvl"),
         running(savePersistentLibrary),
         {"✅ Persistent library saved to {}"},
         "❌ Failed to save persistent library: "},
        {"folder list",
         writeInPlace,
         supportFile("Orvalen/folders.json"),
         running(saveFolderBookmarks),
         {},
         "Error saving folder bookmarks: "},
        {"library backup",
         writeInPlace,
         userFile("backup.orvl"),
         saving(backupScannedLibrary, "backup.orvl"),
         {"✅ Library backup saved to {}"},
         "❌ Failed to backup scanned library: "},
        {"automatic backup",
         writeInPlace,
         supportFile("library_backup_"),
         [](PreparedProgram& program) { program.database().autoBackupLibrary(program.view.trackDict.get()); },
         {"Auto-saved library backup to {}"},
         "",
         "",
         true},
        {"session",
         writeInPlace,
         userFile("evening.orvs"),
         saving(saveSession, "evening.orvs"),
         {},
         "Failed to save session: "},
        {"auto-save",
         writeInPlace,
         supportFile("Orvalen/session.orvs"),
         running(autoSaveSession),
         {"Auto-saving session to {}"},
         "Auto-save session failed: "},
        {"library at the start",
         read,
         supportFile("Orvalen/library.orvl"),
         running(loadPersistentLibrary),
         {},
         "",
         libraryText},
        {"folder list at the start",
         read,
         supportFile("Orvalen/folders.json"),
         running(loadFolderBookmarks),
         {},
         "",
         foldersText},
        {"chosen library",
         read,
         userFile("old.orvl"),
         opening(loadScannedLibrary, "old.orvl"),
         {},
         "",
         libraryText},
        {"chosen session",
         read,
         userFile("old.orvs"),
         opening(loadSession, "old.orvs"),
         {},
         "Failed to load session: ",
         sessionText},
        {"last session",
         read,
         supportFile("Orvalen/session.orvs"),
         running(loadLastSession),
         {},
         "",
         sessionText},
        {"DJEP export",
         read,
         userFile("requests.csv"),
         [](PreparedProgram& program) {
             importDJEPCSV(program.view);
             program.dialogs.answerLater({program.userFolder.path("requests.csv")});
         },
         {},
         "Failed to parse DJEP CSV: ",
         "kind,title,artist\nPlay,Loaded,A\n"},
    };
    for (const ExportTarget& target : exportTargets())
        all.push_back(exportOf(target));
    return all;
}

std::string nameOfTest(const testing::TestParamInfo<Flow>& info) {
    std::string name = info.param.name;
    for (char& letter : name)
        if (letter == ' ' || letter == '-')
            letter = '_';
    return name;
}

FlowRun::FlowRun(const Flow& flow, bool hasOldFile) : flow_(flow) {
    const std::string old(20'000, 'o'); // longer than what a prepared program writes
    if (flow.access == Access::read || hasOldFile) {
        EXPECT_TRUE(writeWholeFile(flow.file(program), flow.access == Access::read ? flow.content : old));
    }
    stateBefore = program.state();
    contentBefore = content();
}

void FlowRun::act(const std::optional<Fault>& fault) {
    const std::string file = flow_.file(program);
    const std::string temporary = (fs::path(file).parent_path() / ".orvalen-").string();
    program.console.clear();
    const FailingCalls calls({file, temporary}, fault);
    flow_.act(program);
    program.settle();
    counts = calls.counts();
}

std::optional<std::string> FlowRun::content() {
    const fs::path path = flow_.file(program);
    for (const auto& entry : fs::directory_iterator(path.parent_path()))
        if (entry.path().string().starts_with(path.string()))
            return readWholeFile(entry.path()).value();
    return std::nullopt;
}

std::vector<std::string> FlowRun::lines() {
    std::vector<std::string> lines = program.console.lines();
    for (std::string& line : lines)
        if (const auto place = line.find(flow_.file(program)); place != std::string::npos)
            line = line.substr(0, place) + "{}";
    return lines;
}

std::size_t FlowRun::otherFiles() {
    const fs::path folder = fs::path(flow_.file(program)).parent_path();
    // A load that succeeds keeps copies of what it replaces.
    const auto copies = std::ranges::count_if(std::array{"earlier_choices.json", "session.previous.orvs"},
                                              [&](const char* name) { return fs::exists(folder / name); });
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), {}) - copies) -
           (content() ? 1U : 0U);
}

} // namespace orvalen::test
