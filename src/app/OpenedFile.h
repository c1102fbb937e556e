#pragma once

#include "core/Location.h"

namespace orvalen {

struct ContentView;

/// Opens a file that the desktop passes to the program. Asks before a library file replaces the library, and
/// before a session file replaces rows that are shown. Refuses other files, and all files during a scan, with
/// a message. Main thread.
void openFile(ContentView& view, const Location& file);

} // namespace orvalen
