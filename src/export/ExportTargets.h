#pragma once

#include <span>
#include <string>
#include <string_view>

namespace orvalen {

struct ContentView;

/// One export choice: what the picker shows, and what its dialog and its console lines say. Empty texts are
/// absent.
struct ExportTarget {
    std::string_view label;
    std::string_view value;
    std::string_view proposedName{};
    std::string_view dialogTitle{};
    std::string_view dialogMessage{};
    std::string_view tip{};
    std::string_view failureLine{}; ///< followed by one space and the error
    std::string_view successLine{}; ///< followed by the path
};

/// The six choices in picker order.
std::span<const ExportTarget> exportTargets();
/// The choice of that value; null for any other text.
const ExportTarget* exportTarget(std::string_view value);

/// A how-to button and its alert.
struct HowTo {
    std::string_view button;
    std::string_view title;
    std::string_view text;
};
std::span<const HowTo> howTos();

/// At least one row is included.
bool canExport(const ContentView& view);
/// Asks where to save and writes the playlist of the selected choice. Main thread; modal.
void exportPlaylist(ContentView& view);
/// The steps of exportPlaylist after the format's console line. Each asks where to save, writes the playlist
/// and shows the banner. `extension` is m3u, m3u8 or pls; nothing happens for any other.
void exportWithSaveDialog(ContentView& view, std::string_view extension);
void exportForVirtualDJ(ContentView& view);
/// Posts a notification before the dialog.
void exportForSerato(ContentView& view);
void showHowToAlert(ContentView& view, const HowTo& howTo);
/// Shows the success banner and hides it two seconds later.
void flashExportBanner(ContentView& view);

} // namespace orvalen
