#pragma once

#include <mpv/client.h>

namespace orvalen {

/// The functions of libmpv that we call. libmpv is not loaded at the start: it needs two hundred other
/// libraries, and loading them takes longer than everything else before the first frame.
struct MpvLibrary {
    decltype(&mpv_create) create;
    decltype(&mpv_initialize) initialize;
    decltype(&mpv_terminate_destroy) terminateDestroy;
    decltype(&mpv_set_option) setOption;
    decltype(&mpv_set_option_string) setOptionString;
    decltype(&mpv_set_property_string) setPropertyString;
    decltype(&mpv_get_property) getProperty;
    decltype(&mpv_get_property_async) getPropertyAsync;
    decltype(&mpv_observe_property) observeProperty;
    decltype(&mpv_set_wakeup_callback) setWakeupCallback;
    decltype(&mpv_wait_event) waitEvent;
    decltype(&mpv_command) command;
    decltype(&mpv_error_string) errorString;

    /// Returns the library, or null if it cannot be loaded. The first call loads it, and it stays loaded.
    /// Thread-safe.
    static const MpvLibrary* load();
    /// Starts load() on a thread and returns at once, so that the first sound does not block the window. The
    /// process must not run destructors when it exits.
    static void loadInBackground();
};

} // namespace orvalen
