#pragma once

#include "app/state/BuildConfiguration.h"
#include "app/state/Field.h"
#include "app/state/LatestInfo.h"
#include "core/LibraryIndex.h"
#include "core/Location.h"
#include "core/MatchedTrack.h"
#include "core/Text.h"
#include "platform/AudioPlayer.h"
#include "platform/Platform.h"
#include "platform/Timer.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvalen {

class PlaylistDatabaseManager;

/// The files and folders that a scan could not read.
struct ScanOutcome {
    std::size_t unreadableFiles = 0;
    /// Music folders that do not exist at the end of the scan and had tracks or existed at its start.
    std::vector<std::string> vanishedFolders;
};

enum class InputMode { textList, spotify, djep };

/// The two line formats. Any other value of `matchInputFormat` means title first.
inline constexpr const char* artistTitleFormat = "artist-title";
inline constexpr const char* titleArtistFormat = "title-artist";

/// The state of the program: fields only. Operations are free functions that take it by reference; they may
/// also use the platform and the database. Main thread.
struct ContentView {
    using Database = std::function<PlaylistDatabaseManager&()>;

    /// `database` returns the database of the process. The first call can come from any thread.
    ContentView(Platform& platform_, Database database_)
        : platform(platform_), database(std::move(database_)) {}

    Platform& platform;
    const Database database;

    Field<std::vector<Location>> musicFolderURLs; ///< file-system paths, not URLs
    Field<std::string> matchInputFormat{artistTitleFormat};
    Field<bool> showExportSuccessBanner{false};
    Field<std::string> selectedExportFormat{"m3u"};
    Field<LibraryIndex> trackDict; ///< the library index
    Field<std::int64_t> trackCount{0};
    Field<std::string> matchInput;
    Field<std::vector<MatchedTrack>> matchedTracks;
    Field<double> matchProgress{0};
    Field<std::shared_ptr<AudioPlayer>> audioPlayer;
    Field<std::optional<Track>> selectedTrack; ///< the previewed track, not the selected track of a row
    Field<bool> isPlaying{false}; ///< the user's last command was to play; stays true at the end of a track
    Field<double> playbackProgress{0};
    Field<TimerHandle> playbackTimer;
    Field<double> scanProgress{0};       ///< above 0 while a scan runs
    Field<std::string> scanningFileName; ///< the file being scanned, or the request being matched
    Field<bool> showResultsPage{false};
    Field<std::optional<LatestInfo>> remoteInfo;
    Field<bool> showUpdateAlert{false};
    Field<InputMode> inputMode{InputMode::textList};
    Field<std::string> spotifyURLInput;
    Field<bool> isMatching{false};
    Field<bool> showDeleteLibraryConfirmation{false};
    Field<bool> ignoreDoNotPlay{true};
    Field<std::int64_t> peakLevelLeft{0};
    Field<std::int64_t> peakLevelRight{0};
    Field<std::array<float, 16>> leftVU;
    Field<std::array<float, 16>> rightVU;
    Field<bool> isAutoSaving{false};
    const std::string spotifyClientID{configuration::spotifyClientID};
    const std::string spotifyClientSecret{configuration::spotifyClientSecret};
    Field<double> vuLevelLeft{0};
    Field<double> vuLevelRight{0};
    Field<TextMap<std::string>> earlierChoices; ///< library key to path; see library/EarlierChoices.h
    Field<std::string> matchedInput;            ///< the wanted text from which `matchedTracks` was made
    Field<bool> hasBrowsedFiles{false};         ///< the user browsed to files for `matchedTracks`
    Field<bool> previousSessionIsKept{false};   ///< replaced rows can be loaded again
    Field<ScanOutcome> lastScan;
};

} // namespace orvalen
