#pragma once

#include "core/Location.h"

namespace orvalen {

struct ContentView;

/// Opens a file that the desktop passes to the program. A session is loaded, a library file after a question
/// because it replaces the index; what shows is not replaced without a question either. Any other file, and
/// any file while a scan runs, is refused with a message. Main thread.
void openFile(ContentView& view, const Location& file);

} // namespace orvalen
