#pragma once

#include "library/LibraryFile.h"
#include "platform/Timer.h"

#include <string>
#include <string_view>

namespace orvalen {

class Bundle;
struct ContentView;

/// Returns the bundle's value of the key, or "?".
std::string infoString(const Bundle& bundle, std::string_view key);

/// Starts auto-save every 30 seconds, until the handle is destroyed. Main thread.
TimerHandle installAutoSave(ContentView& view);

/// Call once, when the first frame of the window was shown. Builds the catalog of every library from now on,
/// restores the library (see loadPersistentLibrary()), and starts the update check. The library is restored
/// when the call returns. Main thread.
void contentAppeared(ContentView& view, LibraryReading reading = {});

} // namespace orvalen
