#include "core/Files.h"
#include "core/Json.h"
#include "core/LibraryIndexBuilder.h"
#include "export/ExportTargets.h"
#include "faults/FailingCalls.h"
#include "import/DjepImport.h"
#include "library/LibraryDocument.h"
#include "library/LibraryFile.h"
#include "library/LibraryIndexState.h"
#include "library/MusicFolders.h"
#include "session/SessionFiles.h"
#include "support/Builders.h"
#include "support/TestPlatform.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <optional>

namespace orvalen::test {
namespace {

namespace fs = std::filesystem;

/// A program with a library, a list, rows, preferred matches and folders.
struct PreparedProgram : TestPlatform {
    PreparedProgram() {
        support().makeFolder("Orvalen");
        database().replacePreferredMatches({{"night band last train home", "/kept.mp3"}});
        const std::vector<Track> tracks{track("Night Band", "Last Train Home", 123), track("Zoé", "Crème")};
        replaceIndex(view, buildIndex(tracks));
        view.musicFolderURLs.set({{"/Music"}});
        view.matchInput.set("kept");
        static const MatchedTrack included = row("Zoé", "Crème", tracks, true); // one identifier for all
        view.matchedTracks.set({included});
    }
    /// Returns everything that a flow may change, as one text.
    std::string state() {
        std::string text = encodeSession(view.matchInput.get(), view.matchedTracks.get());
        writeLibraryDocument(view.trackDict.get(), database().allPreferredMatches(),
                             view.musicFolderURLs.get(), [&](std::string_view library) { text += library; });
        for (const auto* flag : {&view.showResultsPage, &view.isAutoSaving, &view.showExportSuccessBanner})
            text += flag->get() ? " yes" : " no";
        return text + ", input " + std::to_string(static_cast<int>(view.inputMode.get())) + ", tracks " +
               std::to_string(view.trackCount.get());
    }

    TemporaryFolder userFolder; ///< the folder of the user's own files
};

/// One use of one file by the program.
struct Flow {
    const char* name;
    const char* file; ///< in the user's folder; "support/…" is in the application-support folder
    std::function<void(PreparedProgram&)> act;
    /// Start of the error line; empty if no line is written.
    std::string failure;
    /// Content of the file, if the flow reads it; else empty.
    std::string content = {};
    bool isAtomic = false; ///< an export, which first writes a line with its format

    bool reads() const { return !content.empty(); }
};

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

std::vector<Flow> flows() {
    const auto importing = [](PreparedProgram& program) {
        importDJEPCSV(program.view);
        program.dialogs.answerLater({program.userFolder.path("requests.csv")});
    };
    return {
        {"library file", "support/library.orvl", running(savePersistentLibrary),
         "❌ Failed to save persistent library: "},
        {"folder list", "support/folders.json", running(saveFolderBookmarks),
         "Error saving folder bookmarks: "},
        {"library backup", "backup.orvl", running(backupScannedLibrary, "backup.orvl"),
         "❌ Failed to backup scanned library: "},
        {"session", "evening.orvs", running(saveSession, "evening.orvs"), "Failed to save session: "},
        {"auto-save", "support/session.orvs", running(autoSaveSession), "Auto-save session failed: "},
        {"playlist", "wedding.m3u", running(exportPlaylist, "wedding.m3u"),
         "Failed to write playlist file: ", "", true},
        {"library at the start", "support/library.orvl",
         running([](ContentView& view) { loadPersistentLibrary(view); }), "", libraryText},
        {"folder list at the start", "support/folders.json", running(loadFolderBookmarks), "", foldersText},
        {"chosen library", "old.orvl", running(loadScannedLibrary, "old.orvl"), "", libraryText},
        {"chosen session", "old.orvs", running(loadSession, "old.orvs"),
         "Failed to load session: ", sessionText},
        {"last session", "support/session.orvs", running(loadLastSession), "", sessionText},
        {"DJEP export", "requests.csv", importing,
         "Failed to parse DJEP CSV: ", "kind,title,artist\nPlay,Loaded,A\n"},
    };
}

/// One run of a flow in its own program.
class FlowRun {
public:
    /// Prepares the file: the content to read, or for a writing flow a long old file or none.
    FlowRun(const Flow& flow, bool hasOldFile) : flow_(flow) {
        constexpr std::string_view support = "support/";
        const std::string_view file = flow.file;
        path_ = file.starts_with(support)
                    ? program.support().path("Orvalen/" + std::string(file.substr(support.size())))
                    : program.userFolder.path(file);
        const std::string old(20'000, 'o'); // longer than the content that a prepared program writes
        if (flow.reads() || hasOldFile) {
            EXPECT_TRUE(writeWholeFile(path_, flow.reads() ? flow.content : old));
        }
        stateBefore = program.state();
        contentBefore = content();
    }

    void act(const Fault& fault = {}) {
        const std::string temporary = (fs::path(path_).parent_path() / ".orvalen-").string();
        program.console.clear();
        const FailingCalls failing({path_, temporary}, fault);
        flow_.act(program);
        program.settle();
        calls = failing.calls();
    }
    std::optional<std::string> content() const {
        auto bytes = readWholeFile(path_);
        return bytes ? std::optional(std::move(*bytes)) : std::nullopt;
    }
    std::size_t lineCount() const { return program.console.lines().size(); }
    /// Returns whether the last line is the error line of the flow.
    bool hasFailed() const {
        const auto lines = program.console.lines();
        return !flow_.failure.empty() && !lines.empty() && lines.back().starts_with(flow_.failure);
    }
    /// Returns whether a temporary file lies beside the file of the flow.
    bool hasTemporaryFile() const {
        const fs::directory_iterator entries(fs::path(path_).parent_path());
        return std::ranges::any_of(
            entries, [](const auto& entry) { return entry.path().filename().string().starts_with('.'); });
    }

    PreparedProgram program;
    std::string stateBefore;
    std::optional<std::string> contentBefore;
    std::vector<std::string_view> calls; ///< the system calls in act()

private:
    const Flow& flow_;
    std::string path_;
};

/// Returns whether a writing flow must report this fault.
bool losesData(const Fault& fault) {
    if (fault.call == "reserve") // not every file system can reserve space
        return fault.error == ENOSPC;
    return fault.call != "permissions" && fault.error != EINTR && fault.error != 0;
}

/// Returns whether the old file was overwritten in its place before the fault.
bool wasOverwritten(const FlowRun& run, const Fault& fault) {
    const auto end = run.calls.begin() + static_cast<std::ptrdiff_t>(fault.number);
    return run.contentBefore && (fault.half || std::find(run.calls.begin(), end, "write") != end);
}

/// Compares a run with a fault, and the attempt after it, with a run without faults.
void failAndTryAgain(const Flow& flow, const Fault& fault, FlowRun& run, FlowRun& whole) {
    run.act(fault);
    const bool failed = run.hasFailed();
    const std::string state = run.program.state();
    const bool isUnread = flow.reads() && flow.failure.empty() && state == run.stateBefore;
    const std::size_t ownLines = failed ? (flow.isAtomic ? 2 : 1) : whole.lineCount();
    EXPECT_EQ(run.lineCount(), ownLines);
    EXPECT_TRUE(state == (failed ? run.stateBefore : whole.program.state()) || isUnread) << state;
    EXPECT_TRUE(!failed || fault.error != EINTR) << "an interrupted call is to be repeated";
    EXPECT_TRUE(failed || flow.reads() || !losesData(fault)) << "the error was lost";
    if (!failed) {
        EXPECT_EQ(run.content(), whole.content());
    } else if (flow.isAtomic || !wasOverwritten(run, fault)) {
        EXPECT_EQ(run.content(), run.contentBefore);
    }
    EXPECT_FALSE(run.hasTemporaryFile());

    run.act();
    EXPECT_EQ(run.lineCount(), whole.lineCount());
    EXPECT_EQ(run.content(), whole.content());
    if (!flow.reads() || state == run.stateBefore) { // loading twice appends the folders twice
        EXPECT_EQ(run.program.state(), whole.program.state()) << "the second attempt";
    }
}

TEST(FileFaults, LeaveTheStateBeforeOrAfterAndTheNextAttemptWorks) {
    for (const Flow& flow : flows())
        for (const bool hasOldFile : {false, true}) {
            if (hasOldFile && flow.reads())
                continue;
            FlowRun whole(flow, hasOldFile);
            whole.act();
            EXPECT_FALSE(whole.hasFailed()) << flow.name;
            EXPECT_EQ(std::ranges::count(whole.calls, "sync"), flow.isAtomic ? 1 : 0) << "before the rename";
            for (const Fault& fault : faultsOf(whole.calls)) {
                SCOPED_TRACE(testing::Message() << flow.name << ", " << fault);
                FlowRun run(flow, hasOldFile);
                failAndTryAgain(flow, fault, run, whole);
            }
        }
}

} // namespace
} // namespace orvalen::test
