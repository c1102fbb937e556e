#pragma once

#include "core/Location.h"

#include <array>
#include <string_view>
#include <vector>

namespace orvalen {

struct ContentView;

// The list of folders and single audio files that the user added. Main thread.

/// The extensions of audio files that can be added one by one.
inline constexpr std::array<std::string_view, 5> addedExtensions{"mp3", "m4a", "wav", "aiff", "aif"};

/// Asks for folders and audio files and adds what was chosen.
void addMusicLocations(ContentView& view);
/// Adds each location that can be read and is not listed yet, then saves the list. What a dialog answered or
/// what was dropped on the window.
void addMusicLocations(ContentView& view, const std::vector<Location>& locations);
void removeMusicLocation(ContentView& view, const Location& location);
/// Empties the list for this run; the saved one stays.
void clearMusicLocations(ContentView& view);

/// Writes "folders.json".
void saveFolderBookmarks(ContentView& view);
/// Reads "folders.json" and queues the replacement of the list; silent when there is nothing to read. Keeps a
/// folder whose drive is not connected, and drops every other one that cannot be read.
void loadFolderBookmarks(ContentView& view);

} // namespace orvalen
