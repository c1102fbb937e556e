#pragma once

namespace orvalen {

/// Makes our pressable controls and our editor speak for themselves. The toolkit's own buttons call
/// everything a push button and tell no screen reader that they are disabled. Call once, before the first
/// control is made.
void installControlAccessible();

} // namespace orvalen
