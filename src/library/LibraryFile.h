#pragma once

#include "core/Error.h"
#include "core/Location.h"

#include <string>

namespace orvalen {

struct ContentView;
struct ScanOutcome;

// Library files: the whole index, the preferred matches and the folder paths in one JSON object. Main thread.

/// Writes the current library, replacing what is there.
Expected<void> writeLibraryFile(ContentView& view, const Location& destination);
/// Replaces the index and the preferred matches and appends the folders. A document of another shape changes
/// nothing, without a word.
void applyLibraryFile(ContentView& view, std::string bytes);

/// Copies "library.orvl" to "library.previous.orvl", when the scan that is about to replace the index could
/// read less of the music than the index holds. To be called before the index is replaced.
void keepLibraryOfBefore(ContentView& view, const ScanOutcome& scan);
/// Loads the index and the preferred matches of that copy; the list of folders stays as it is.
void loadLibraryOfBefore(ContentView& view);

/// "library.orvl" in the support folder, after a scan; saves the folder bookmarks too.
void savePersistentLibrary(ContentView& view);
/// The library part of the start: queues the folder bookmarks, then reads "library.orvl".
void loadPersistentLibrary(ContentView& view);

void backupScannedLibrary(ContentView& view);
void loadScannedLibrary(ContentView& view);
/// What `loadScannedLibrary` does with the chosen file.
void loadScannedLibraryFile(ContentView& view, const Location& file);
/// Deletes "library.orvl" and empties the index and the preferred matches.
void removeSavedLibrary(ContentView& view);

} // namespace orvalen
