#pragma once

#include "core/Location.h"

#include <array>
#include <string_view>
#include <vector>

namespace orvalen {

struct ContentView;

// The music folders: folders and single audio files that the user added. Main thread.

/// The extensions of audio files that can be added as music folders.
inline constexpr std::array<std::string_view, 5> addedExtensions{"mp3", "m4a", "wav", "aiff", "aif"};

/// Asks for folders and audio files and adds them.
void addMusicLocations(ContentView& view);
/// Adds each location that can be read and is not in the list, then saves the list.
void addMusicLocations(ContentView& view, const std::vector<Location>& locations);
/// Removes the location from the list, then saves the list. Its tracks stay in the index until the next scan.
void removeMusicLocation(ContentView& view, const Location& location);
/// Empties the list until the program ends. The saved list stays.
void clearMusicLocations(ContentView& view);

/// Writes "folders.json". Writes an error line on failure.
void saveFolderBookmarks(ContentView& view);
/// Reads "folders.json" and posts the replacement of the list. Keeps a folder whose drive is not connected
/// and drops others that cannot be read. Changes nothing if the file cannot be read.
void loadFolderBookmarks(ContentView& view);

} // namespace orvalen
