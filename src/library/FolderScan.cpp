#include "library/FolderScan.h"

#include "app/state/ContentView.h"
#include "core/FolderCount.h"
#include "core/LibraryIndexBuilder.h"
#include "core/Text.h"
#include "library/AudioMetadata.h"
#include "library/EarlierChoices.h"
#include "library/FolderWalk.h"
#include "library/LibraryFile.h"
#include "library/LibraryIndexState.h"
#include "library/PlaylistDatabaseManager.h"
#include "platform/Dialogs.h"
#include "platform/MainQueue.h"
#include "platform/MediaAsset.h"
#include "platform/Sound.h"
#include "platform/WorkerQueue.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <iterator>
#include <optional>

namespace orvalen {
namespace {

constexpr std::size_t reportInterval = 50;

bool isAudio(std::string_view path) {
    constexpr std::array<std::string_view, 6> extensions = {"mp3", "m4a", "wav", "mp4", "aiff", "aif"};
    return std::ranges::find(extensions, toAsciiLower(pathExtension(path))) != extensions.end();
}

bool isMissing(const std::string& path) {
    std::error_code error;
    return !std::filesystem::exists(path, error);
}

/// The data of one scan. Belongs to the running job. Uses `view_` only in posts.
class Scan {
public:
    Scan(ContentView& view, std::vector<std::string> folders)
        : view_(view), platform_(view.platform), before_(view.trackDict.get()), folders_(folders),
          walk_(std::move(folders), view.platform.console),
          readAhead_(view.platform.mediaAssets.startReadAhead()) {}

    /// Lists one folder or reads the tags of one file. Returns false when the scan is complete. Tag queue.
    bool step();

private:
    void leaveOutUnusedFolders();
    void expectFiles(const std::vector<std::string>& items);
    void passFile();
    void beginReading();
    bool readNextFile();
    void readFile(const std::string& path);
    void report(std::size_t item);
    void complete();

    ContentView& view_;
    Platform& platform_;
    LibraryIndex before_; ///< the index when the scan was started
    std::vector<std::string> folders_;
    FolderWalk walk_;
    /// reads the first files while folders are still listed
    std::unique_ptr<MediaReadAhead> readAhead_;
    std::size_t expected_ = 0;   ///< number of items whose audio files were passed to readAhead_
    std::size_t filesAhead_ = 0; ///< files passed to readAhead_ that are not yet read
    bool hasBegun_ = false;
    bool isListed_ = false;
    std::vector<std::string> items_;
    std::size_t nextItem_ = 0;
    std::optional<PreferredMatches> preferred_; ///< read when all folders were listed
    LibraryIndexBuilder tracks_;
    ScanOutcome outcome_;
};

bool Scan::step() {
    if (!isListed_) {
        if (!hasBegun_)
            leaveOutUnusedFolders();
        hasBegun_ = true;
        const bool goesOn = walk_.step();
        expectFiles(walk_.items());
        if (!goesOn)
            beginReading();
        return true;
    }
    if (readNextFile())
        return true;
    complete();
    return false;
}

/// A folder that is missing and has no indexed tracks cannot lose any.
void Scan::leaveOutUnusedFolders() {
    std::erase_if(folders_, [this](const std::string& folder) {
        return isMissing(folder) && countTracksUnderFolder(before_, folder) == 0;
    });
    before_ = {};
}

void Scan::expectFiles(const std::vector<std::string>& items) {
    for (; readAhead_ && expected_ < items.size() && filesAhead_ < MediaReadAhead::mostFiles; ++expected_)
        if (isAudio(items[expected_])) {
            readAhead_->expect(items[expected_]);
            ++filesAhead_;
        }
}

void Scan::passFile() {
    if (!readAhead_)
        return;
    readAhead_->passOne();
    --filesAhead_;
    expectFiles(items_);
}

void Scan::beginReading() {
    isListed_ = true;
    items_ = walk_.takeItems();
    // Read only now: listing a slow drive can take minutes, in which the user can choose candidates.
    preferred_ = view_.database().wholePreferredMatches();
}

/// Reads the next audio file. Returns false if no item is left.
bool Scan::readNextFile() {
    while (nextItem_ < items_.size()) {
        const std::size_t item = nextItem_++;
        const bool audio = isAudio(items_[item]);
        if (audio) {
            readFile(items_[item]);
            passFile();
        }
        report(item);
        if (audio)
            return true;
    }
    return false;
}

void Scan::readFile(const std::string& path) {
    bool unreadable = false;
    tracks_.fileTrack(readTrackMetadata(platform_.mediaAssets, platform_.console, path, &unreadable));
    if (unreadable)
        ++outcome_.unreadableFiles;
}

void Scan::report(std::size_t item) {
    if (item % reportInterval != 0 && item + 1 != items_.size())
        return;
    const double progress = static_cast<double>(item) / static_cast<double>(items_.size());
    platform_.mainQueue.post([&view = view_, progress, name = std::string(lastPathComponent(items_[item]))] {
        view.scanProgress.set(progress);
        view.scanningFileName.set(name);
    });
}

void Scan::complete() {
    std::ranges::copy_if(folders_, std::back_inserter(outcome_.vanishedFolders), isMissing);
    platform_.mainQueue.post([&view = view_, index = tracks_.finish(), preferred = std::move(preferred_),
                              outcome = std::move(outcome_)] {
        keepLibraryOfBefore(view, outcome);
        view.lastScan.set(outcome);
        replaceIndex(view, index);
        view.scanProgress.set(0);
        view.scanningFileName.set({});
        if (preferred) { // if the table could not be read, it stays as it is
            keepChoicesReplacedBy(view, *preferred);
            view.database().replacePreferredMatches(*preferred);
        }
        savePersistentLibrary(view);
        view.database().autoBackupLibrary(index);
        view.platform.sound.play("Glass");
        view.platform.dialogs.showMessage(
            "Library Refreshed", "Your scanned library has been updated and preferred tracks preserved.");
    });
}

/// Posts a new job per step, so that other jobs wait for one folder or file only, not for the whole scan.
void goOn(WorkerQueue& queue, const std::shared_ptr<Scan>& scan) {
    queue.post([&queue, scan] {
        if (scan->step())
            goOn(queue, scan);
    });
}

} // namespace

void scanLibrary(ContentView& view) {
    if (view.musicFolderURLs.get().empty())
        return;
    std::vector<std::string> folders;
    for (const Location& location : view.musicFolderURLs.get())
        folders.push_back(location.path);

    view.scanProgress.set(0);
    view.scanningFileName.set({});
    view.platform.mainQueue.post([&view] {
        view.scanProgress.set(0.01);
        view.scanningFileName.set("Preparing scan…");
    });
    goOn(view.platform.tagQueue, std::make_shared<Scan>(view, std::move(folders)));
}

} // namespace orvalen
