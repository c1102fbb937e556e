#pragma once

#include "core/Location.h"
#include "core/MatchSession.h"

namespace orvalen {

struct ContentView;

// Sessions: the wanted text and the reviewed rows. Main thread.

void saveSession(ContentView& view);
/// Writes "session.orvs" in the support folder, unless there are no rows.
void autoSaveSession(ContentView& view);
void loadSession(ContentView& view);
/// What `loadSession` does with the chosen file.
void loadSessionFile(ContentView& view, const Location& file);
/// Brings back the last auto-save; silent when there is none.
void loadLastSession(ContentView& view);
/// Writes the rows and their wanted text to "session.previous.orvs" in the support folder when some are
/// ticked or the user browsed to files for them. To be called before other rows replace them. Errors are
/// silent.
void keepReplacedRows(ContentView& view);
/// Loads that file; the rows that it replaces are kept in it in turn.
void loadPreviousSession(ContentView& view);
void applySession(ContentView& view, MatchSession session);

} // namespace orvalen
