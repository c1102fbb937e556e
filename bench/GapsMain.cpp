#include "LoopProbe.h"
#include "MadeLibrary.h"
#include "MadeMp3.h"
#include "PageCache.h"
#include "Program.h"
#include "ReviewedRows.h"
#include "ScanTimeline.h"
#include "app/state/MainThread.h"
#include "core/Files.h"
#include "core/LibraryIndexBuilder.h"
#include "library/FolderScan.h"
#include "library/LibraryDocument.h"
#include "matching/MatchReview.h"
#include "matching/WantedList.h"
#include "platform/desktop/MpvLibrary.h"
#include "preview/PreviewPlayer.h"
#include "session/SessionFiles.h"
#include "support/TemporaryFolder.h"

#include <QDialog>
#include <QQuickWindow>
#include <QTimer>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <sys/wait.h>
#include <unistd.h>

namespace orvalen::bench {
namespace {

using namespace std::chrono_literals;

/// Creates the files of a user: music, and the library file of an earlier scan.
void makeHome(const std::string& home, std::size_t tracks) {
    test::MadeLibrary made;
    LibraryIndexBuilder index;
    std::string lastFolder;
    for (std::size_t i = 0; i < tracks; ++i) {
        Track track = made.nextTrack();
        track.path = home + track.path;
        const std::string folder = track.path.substr(0, track.path.rfind('/'));
        if (folder != std::exchange(lastFolder, folder))
            std::filesystem::create_directories(folder);
        std::ofstream(track.path) << mp3Tag(track, 0, 0);
        index.fileTrack(track);
    }
    std::filesystem::create_directories(home + "/Orvalen");
    writeLibraryDocument(index.finish(), {}, {{home + "/home/dj/Music"}}, [&](std::string_view text) {
        std::ofstream(home + "/Orvalen/library.orvl") << text;
    });
    std::ofstream lines(home + "/lines.txt");
    for (const std::string& line : made.wantedLines(1000))
        lines << line << '\n';
}

/// Creates files as a user buys them: with a picture, and with sound that other programs accept.
void makeMusic(const std::string& folder, std::size_t tracks) {
    test::MadeLibrary made;
    for (std::size_t i = 0; i < tracks; ++i) {
        Track track = made.nextTrack();
        const std::filesystem::path path = folder + track.path;
        std::filesystem::create_directories(path.parent_path());
        std::ofstream(path) << mp3File(track, 30'000, 24);
    }
    ::sync();
}

std::vector<std::string> filesBelow(const std::string& folder) {
    std::vector<std::string> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(folder))
        if (entry.is_regular_file())
            files.push_back(entry.path().string());
    return files;
}

/// Calls makeHome() in a child process, so that its memory is not part of the measured process.
bool makeHomeElsewhere(const std::string& home, std::size_t tracks) {
    const pid_t child = ::fork();
    if (child == 0) {
        makeHome(home, tracks);
        std::_Exit(0);
    }
    int status = 0;
    return ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

double millisecondsSince(std::chrono::steady_clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

double residentMegabytes() {
    std::ifstream statistics("/proc/self/statm");
    long whole = 0;
    long resident = 0;
    statistics >> whole >> resident;
    return static_cast<double>(resident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / (1 << 20);
}

/// Drives the program through its operations and prints the gaps of each step.
class Session {
public:
    /// `leastTracks` is the size from which on the library counts as restored.
    Session(LoopProbe& probe, std::size_t leastTracks) : probe_(probe), leastTracks_(leastTracks) {
        QObject::connect(&confirmations_, &QTimer::timeout, [this] { closeMessage(); });
        confirmations_.start(20);
    }

    void run(const std::string& home) {
        start();
        ContentView& view = program_->view;
        step(
            "scan", [&] { scanLibrary(view); },
            [&] { return messages_ == 1 && view.scanProgress.get() == 0; });
        const std::string lines = readWholeFile(home + "/lines.txt").value();
        step(
            "match 1,000 lines",
            [&] {
                view.matchInput.set(lines);
                startMatching(view);
            },
            [&] { return !view.isMatching.get(); });
        step("back", [&] { view.showResultsPage.set(false); });
        auto rows = test::reviewedRows(10'000);
        step("open 10,000 rows", [&] {
            view.matchedTracks.set(std::move(rows)); // as a match run does
            view.showResultsPage.set(true);
        });
        step("select all", [&] { setIncludeForAll(view, true); });
        step("auto-save", [&] { autoSaveSession(view); });
    }

    /// Scans twice, and prints the phases of each scan as a row of a table.
    void timeScans(const std::string& folder, const std::string& home) {
        start();
        timeline_ = std::make_unique<ScanTimeline>(program_->view, home);
        program_->view.musicFolderURLs.set({{folder}});
        rest(); // creates the views of the folder list
        for (const char* name : {"first", "again"}) {
            const int before = messages_;
            const std::clock_t processorBefore = std::clock();
            timeline_->click();
            scanLibrary(program_->view);
            wait([&] { return messages_ > before; });
            std::printf("scan %s, %zu tracks:", name, program_->view.trackDict.get().trackCount());
            for (const ScanTimeline::Phase& phase : timeline_->phases())
                std::printf(" | %s %.1f", phase.name, phase.milliseconds);
            std::printf(" | processor %.1f\n",
                        static_cast<double>(std::clock() - processorBefore) * 1e3 / CLOCKS_PER_SEC);
            rest();
        }
    }

    /// Matches, includes, previews and closes repeatedly. Prints the memory of the process.
    void repeat(int loops) {
        ContentView& view = program_->view;
        for (int loop = 1; loop <= loops; ++loop) {
            startMatching(view);
            wait([&] { return !view.isMatching.get(); });
            rest(120ms);
            setIncludeForAll(view, true);
            if (const auto& rows = view.matchedTracks.get(); rows.front().selectedTrack)
                togglePreview(view, *rows.front().selectedTrack);
            rest(60ms);
            view.showResultsPage.set(false);
            rest(400ms);
            if (loop == 10 || loop == loops)
                std::printf("  after %d loops: %.1f MB\n", loop, residentMegabytes());
        }
    }

private:
    void start() {
        bool shown = false;
        const auto begin = std::chrono::steady_clock::now();
        program_ = std::make_unique<Program>();
        const auto printTime = [&] {
            shown = true;
            std::printf("first frame after %.0f ms\n", millisecondsSince(begin));
        };
        QObject::connect(program_->window.window(), &QQuickWindow::frameSwapped, &probe_, printTime,
                         Qt::SingleShotConnection);
        program_->window.show();
        wait([&] { return shown; });
        tell("first frame");
        MpvLibrary::loadInBackground(); // as main() does
        wait([&] { return program_->view.trackDict.get().trackCount() >= leastTracks_; });
        std::printf("library after %.0f ms\n", millisecondsSince(begin));
        rest();
        tell("restore");
    }

    void step(
        const char* name, const std::function<void()>& operation,
        const std::function<bool()>& isDone = [] { return true; }) {
        bool called = false;
        QMetaObject::invokeMethod(
            &probe_,
            [&] {
                called = true;
                operation();
            },
            Qt::QueuedConnection);
        wait([&] { return called && isDone(); });
        rest();
        tell(name);
    }

    void wait(const std::function<bool()>& isDone) {
        while (!isDone())
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }

    /// Runs the event loop until the views are up to date. Gaps in this time count for the current step.
    void rest(std::chrono::milliseconds time = 1500ms) {
        const auto end = std::chrono::steady_clock::now() + time;
        wait([&] { return std::chrono::steady_clock::now() > end; });
    }

    /// Confirms the open message, if there is one. A timer calls this, because messages are modal.
    void closeMessage() {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog && (!timeline_ || timeline_->isMessageShown())) {
            ++messages_;
            dialog->accept();
        }
    }

    void tell(const char* name) {
        const LoopProbe::Gaps gaps = probe_.takeGaps();
        const auto print = [](const char* what, const LoopProbe::Gap& gap) {
            std::printf("  %-20s %8.1f ms, processor %8.1f ms  %s\n", what, gap.milliseconds, gap.processor,
                        gap.event.toUtf8().constData());
        };
        print(name, gaps.longest);
        if (gaps.tellable.size() > 1)
            for (const LoopProbe::Gap& gap : gaps.tellable)
                print("    over 50 ms:", gap);
        std::fflush(stdout);
    }

    LoopProbe& probe_;
    std::size_t leastTracks_;
    QTimer confirmations_;
    std::unique_ptr<ScanTimeline> timeline_; // outlives the state
    std::unique_ptr<Program> program_;
    int messages_ = 0;
};

} // namespace
} // namespace orvalen::bench

/// Usage: orvalen_gaps TRACKS [LOOPS]. Creates a library of TRACKS files below the temporary folder and runs
/// the real program with it. Prints the longest gap of the main loop for each step. With LOOPS, then matches,
/// includes, previews and closes LOOPS times, and prints the memory of the process.
///
/// orvalen_gaps make FOLDER TRACKS creates audio files. orvalen_gaps drop FOLDER removes them from the page
/// cache. orvalen_gaps scan FOLDER DATA_HOME scans them twice with the real program, which keeps its files in
/// DATA_HOME, and prints how long each phase takes.
int main(int argc, char** argv) {
    using namespace orvalen;
    const std::string what = argc >= 2 ? argv[1] : "";
    if (what == "make" && argc == 4) {
        bench::makeMusic(argv[2], std::strtoull(argv[3], nullptr, 10));
        return 0;
    }
    if (what == "drop" && argc == 3) {
        if (bench::dropFromCache(bench::filesBelow(argv[2])))
            return 0;
        std::fprintf(stderr, "The page cache of this folder cannot be dropped.\n");
        return 1;
    }
    const bool isScan = what == "scan" && argc == 4;
    const std::size_t tracks = std::strtoull(what.c_str(), nullptr, 10);
    if (tracks == 0 && !isScan) {
        std::fprintf(stderr,
                     "usage: %s TRACKS [LOOPS] | make FOLDER TRACKS | drop FOLDER | scan FOLDER DATA_HOME\n",
                     argv[0]);
        return 2;
    }
    const test::TemporaryFolder temporary;
    const std::string home = isScan ? argv[3] : temporary.path();
    if (!isScan && !bench::makeHomeElsewhere(home, tracks)) {
        std::fprintf(stderr, "The library could not be made.\n");
        return 1;
    }
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND"))
        qputenv("QT_QUICK_BACKEND", "software");
    qputenv("XDG_DATA_HOME", QByteArray::fromStdString(home));
    std::filesystem::create_directories(home + "/Orvalen");
    bench::LoopProbe probe(argc, argv);
    becomeMainThread();
    const bool hasLibrary = std::filesystem::exists(home + "/Orvalen/library.orvl");
    bench::Session session(probe, isScan ? std::size_t{hasLibrary} : tracks / 2);
    if (isScan) {
        session.timeScans(argv[2], home);
        return 0;
    }
    session.run(home);
    if (argc >= 3)
        session.repeat(static_cast<int>(std::strtol(argv[2], nullptr, 10)));
}
