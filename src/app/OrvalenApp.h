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

/// What happens when the window's content appears: restores the library, then looks for a newer version.
/// Main thread; the restore is done when it returns.
void contentAppeared(ContentView& view);

} // namespace orvalen
