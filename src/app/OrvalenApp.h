#pragma once

#include "platform/Timer.h"

#include <string>
#include <string_view>

namespace orvalen {

class Bundle;
struct ContentView;

/// A text of the program's own description, "?" when there is none.
std::string infoString(const Bundle& bundle, std::string_view key);

/// Starts the auto-save tick; it ends with the handle. Main thread.
TimerHandle installAutoSave(ContentView& view);

/// Called once, when the window's content appears. Has every library prepared for matching from now on,
/// restores the library, then looks for a newer version. Main thread; the library is restored when it
/// returns.
void contentAppeared(ContentView& view);

} // namespace orvalen
