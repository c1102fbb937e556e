#pragma once

#include "core/Location.h"
#include "core/MatchSession.h"

namespace orvalen {

struct ContentView;

// Session files: the wanted text and the rows. Main thread.

/// Asks for a file name and writes the session. Writes an error line on failure.
void saveSession(ContentView& view);
/// Writes "session.orvs" in the support folder, unless there are no rows. Shows the auto-save indicator for
/// two seconds.
void autoSaveSession(ContentView& view);
/// Asks for a session file and loads it.
void loadSession(ContentView& view);
/// Loads the session file. On failure, writes an error line and changes nothing.
void loadSessionFile(ContentView& view, const Location& file);
/// Loads the last auto-saved session. Does nothing if that file is missing or unreadable.
void loadLastSession(ContentView& view);
/// Writes the rows and their wanted text to "session.previous.orvs" in the support folder, if a row is
/// included or the user browsed to files. Call before other rows replace them. Errors are ignored.
void keepReplacedRows(ContentView& view);
/// Sets `previousSessionIsKept` if "session.previous.orvs" was written in the last 24 hours. Call at the
/// start.
void offerPreviousSession(ContentView& view);
/// Loads "session.previous.orvs". The rows that it replaces are written to the same file.
void loadPreviousSession(ContentView& view);
/// Replaces the wanted text and the rows, and shows the results page.
void applySession(ContentView& view, MatchSession session);

} // namespace orvalen
