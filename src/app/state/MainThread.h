#pragma once

namespace orvalen {

/// Makes the calling thread the one that owns the state.
void becomeMainThread();

/// In debug builds, stops the program when another thread touches the state.
#ifdef NDEBUG
inline void assertMainThread() {}
#else
void assertMainThread();
#endif

} // namespace orvalen
