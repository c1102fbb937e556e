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

#include <filesystem>

namespace orvalen::test {
namespace {

namespace fs = std::filesystem;

/// Rows with equal identifiers in every program.
const std::vector<MatchedTrack>& rows() {
    static const std::vector<MatchedTrack> all{
        row("Night Band", "Last Train Home", {track("Night Band", "Last Train Home", 123)}, true),
        row("Zoé", "Crème", {track("Zoé", "Crème")}, true)};
    return all;
}

/// Runs the operation and answers its dialog with this file.
auto running(void (*operation)(ContentView&), const char* file = nullptr) {
    return [=](PreparedProgram& program) {
        if (file != nullptr) {
            program.dialogs.willSaveTo(program.userFolder.path(file));
            program.dialogs.willOpen({program.userFolder.path(file)});
        }
        operation(program.view);
    };
}

constexpr const char* libraryText =
    R"({"tracks":[{"title":"Loaded","artist":"A","genre":"","path":"/l.mp3"}],"preferred":[{"key":"a loaded","path":"/l.mp3"}],"folders":["/Loaded"]})";
constexpr const char* sessionText =
    R"({"matchInput":"loaded","matchedTracks":[{"id":"E621E1F8-C36C-495A-93FC-0C247A3E6E5F","title":"T","artist":"A","found":false,"options":[],"include":true}]})";
// "bookmark:/Loaded"
constexpr const char* foldersText = R"(["Ym9va21hcms6L0xvYWRlZA=="])";

Flow exportOf(const ExportTarget& target) {
    return {.name = target.value.data(),
            .file = "wedding.m3u",
            .act =
                [value = std::string(target.value)](PreparedProgram& program) {
                    program.view.selectedExportFormat.set(value);
                    program.dialogs.willSaveTo(program.userFolder.path("wedding.m3u"));
                    exportPlaylist(program.view);
                },
            .failure = std::string(target.failureLine) + " ",
            .isAtomic = true};
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
    const auto importing = [](PreparedProgram& program) {
        importDJEPCSV(program.view);
        program.dialogs.answerLater({program.userFolder.path("requests.csv")});
    };
    std::vector<Flow> all{
        {"library file", "support/library.orvl", running(savePersistentLibrary),
         "❌ Failed to save persistent library: "},
        {"folder list", "support/folders.json", running(saveFolderBookmarks),
         "Error saving folder bookmarks: "},
        {"library backup", "backup.orvl", running(backupScannedLibrary, "backup.orvl"),
         "❌ Failed to backup scanned library: "},
        {"session", "evening.orvs", running(saveSession, "evening.orvs"), "Failed to save session: "},
        {"auto-save", "support/session.orvs", running(autoSaveSession), "Auto-save session failed: "},
        {"library at the start", "support/library.orvl", running(loadPersistentLibrary), "", libraryText},
        {"folder list at the start", "support/folders.json", running(loadFolderBookmarks), "", foldersText},
        {"chosen library", "old.orvl", running(loadScannedLibrary, "old.orvl"), "", libraryText},
        {"chosen session", "old.orvs", running(loadSession, "old.orvs"),
         "Failed to load session: ", sessionText},
        {"last session", "support/session.orvs", running(loadLastSession), "", sessionText},
        {"DJEP export", "requests.csv", importing,
         "Failed to parse DJEP CSV: ", "kind,title,artist\nPlay,Loaded,A\n"},
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
    const std::string old(20'000, 'o'); // longer than the content that a prepared program writes
    if (flow.reads() || hasOldFile) {
        EXPECT_TRUE(writeWholeFile(path(), flow.reads() ? flow.content : old));
    }
    stateBefore = program.state();
    contentBefore = content();
}

void FlowRun::act(const std::optional<Fault>& fault) {
    const std::string temporary = (fs::path(path()).parent_path() / ".orvalen-").string();
    program.console.clear();
    const FailingCalls calls({path(), temporary}, fault);
    flow_.act(program);
    program.settle();
    counts = calls.counts();
}

std::string FlowRun::path() const {
    constexpr std::string_view support = "support/";
    const std::string_view file = flow_.file;
    return file.starts_with(support)
               ? program.support().path("Orvalen/" + std::string(file.substr(support.size())))
               : program.userFolder.path(file);
}

std::optional<std::string> FlowRun::content() const {
    if (!fs::exists(path()))
        return std::nullopt;
    return readWholeFile(path()).value();
}

std::vector<std::string> FlowRun::lines() const {
    std::vector<std::string> lines = program.console.lines();
    for (std::string& line : lines)
        if (const auto place = line.find(path()); place != std::string::npos)
            line.replace(place, path().size(), "{}");
    return lines;
}

std::vector<std::string> FlowRun::temporaryFiles() const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(fs::path(path()).parent_path()))
        if (const std::string name = entry.path().filename(); name.starts_with('.'))
            names.push_back(name);
    return names;
}

} // namespace orvalen::test
