#pragma once

namespace orvalen {

/// Installs our own accessible interfaces for buttons, lists, progress bars and the editor. Qt's interfaces
/// call every control a push button and do not report that a button is disabled. Call once, before the first
/// control is created.
void installControlAccessible();

} // namespace orvalen
