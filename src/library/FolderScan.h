#pragma once

namespace orvalen {

struct ContentView;

/// Rebuilds the index from the music folders. Returns at once; folders and tags are read on the tag queue and
/// only posts reach the state. Cannot be cancelled; ends with a sound and a message. Main thread.
void scanLibrary(ContentView& view);

} // namespace orvalen
