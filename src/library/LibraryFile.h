#pragma once

#include "core/Error.h"
#include "core/Location.h"

#include <future>
#include <memory>
#include <string>

namespace orvalen {

class UserFolders;
struct ContentView;
struct LibraryDocument;
struct ScanOutcome;

// Library files: all tracks, the preferred matches and the music folders as one JSON object. Main thread.

/// Writes the library, replacing the file in place.
Expected<void> writeLibraryFile(ContentView& view, const Location& destination);
/// Replaces the index and the preferred matches, and appends the music folders. Changes nothing, without an
/// error line, if the bytes are not a library file.
void applyLibraryFile(ContentView& view, std::string bytes);

/// Copies "library.orvl" to "library.previous.orvl" if the scan could read fewer files than the index holds.
/// Call before the scan replaces the index.
void keepLibraryOfBefore(ContentView& view, const ScanOutcome& scan);
/// Loads the index and the preferred matches of that copy, and copies it back to "library.orvl". The music
/// folders stay.
void loadLibraryOfBefore(ContentView& view);

/// Writes "library.orvl" in the support folder and saves the music folders. Writes a success or error line.
void savePersistentLibrary(ContentView& view);
/// The content of "library.orvl", or null if it cannot be read.
using LibraryReading = std::future<std::unique_ptr<LibraryDocument>>;
/// Starts to read "library.orvl" on a thread, so that the window can be created meanwhile. Returns an invalid
/// future if there is no support folder or the thread cannot be started.
LibraryReading startReadingLibrary(const UserFolders& userFolders);
/// Restores the library at the start: posts the music folders, loads the earlier choices, and waits for
/// `reading`. If that is invalid, reads "library.orvl" itself.
void loadPersistentLibrary(ContentView& view, LibraryReading reading = {});

/// Asks for a file name and writes the library, with a success or error line.
void backupScannedLibrary(ContentView& view);
/// Asks for a library file and loads it.
void loadScannedLibrary(ContentView& view);
/// Loads the library file. Does nothing if it cannot be read; see applyLibraryFile().
void loadScannedLibraryFile(ContentView& view, const Location& file);
/// Deletes "library.orvl", and empties the index, the preferred matches and the earlier choices.
void removeSavedLibrary(ContentView& view);

} // namespace orvalen
