#pragma once

namespace orvalen {

struct ContentView;

/// Rebuilds the library index from the music folders. Returns at once: the tag queue lists folders and reads
/// tags, and posts the result to the main thread. Cannot be cancelled. Ends with a sound and a message. Does
/// nothing without music folders. Main thread.
void scanLibrary(ContentView& view);

} // namespace orvalen
