#pragma once

namespace orvalen {

/// Makes the calling thread the main thread, which owns the state.
void becomeMainThread();

/// Stops the program if the calling thread is not the main thread. Debug builds only.
#ifdef NDEBUG
inline void assertMainThread() {}
#else
void assertMainThread();
#endif

} // namespace orvalen
