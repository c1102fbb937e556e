#pragma once

#include <span>
#include <string>
#include <string_view>

namespace orvalen {

struct ContentView;

/// One export choice: the text of its entry in the picker, its dialog and its console lines. Empty texts are
/// not shown.
struct ExportTarget {
    std::string_view label;
    std::string_view value;
    std::string_view proposedName{};
    std::string_view dialogTitle{};
    std::string_view dialogMessage{};
    std::string_view tip{};
    std::string_view failureLine{}; ///< followed by a space and the error
    std::string_view successLine{}; ///< followed by the path
};

/// Returns the six choices in the order of the picker.
std::span<const ExportTarget> exportTargets();
/// Returns the choice with the value, or null.
const ExportTarget* exportTarget(std::string_view value);

/// A how-to button and the alert that it shows.
struct HowTo {
    std::string_view button;
    std::string_view title;
    std::string_view text;
};
std::span<const HowTo> howTos();

/// Returns whether at least one row is included.
bool canExport(const ContentView& view);
/// Asks where to save and writes the playlist of the selected choice. Blocks in a modal dialog. Main thread.
void exportPlaylist(ContentView& view);
/// exportPlaylist() calls one of these functions. Each asks where to save, writes the playlist and shows the
/// banner. `extension` is m3u, m3u8 or pls; nothing happens for other values.
void exportWithSaveDialog(ContentView& view, std::string_view extension);
void exportForVirtualDJ(ContentView& view);
/// Posts a notification before the dialog.
void exportForSerato(ContentView& view);
/// Shows the instructions in a modal message.
void showHowToAlert(ContentView& view, const HowTo& howTo);
/// Shows the success banner for two seconds.
void flashExportBanner(ContentView& view);

} // namespace orvalen
