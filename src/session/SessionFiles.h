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
void applySession(ContentView& view, MatchSession session);

} // namespace orvalen
