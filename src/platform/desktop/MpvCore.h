#pragma once

#include "core/Error.h"
#include "platform/system/DetachedQueue.h"

#include <atomic>
#include <chrono>
#include <initializer_list>
#include <optional>
#include <string>

struct mpv_handle;
struct mpv_event;

namespace orvalen {

/// One player of libmpv: sound only, no user configuration, no scripts, and nothing opened but what it is
/// told to load. Plays silently, in real time, without a sound device. Main thread.
///
/// libmpv answers calls on its own thread, which hangs while it waits for a drive. A background thread
/// therefore makes the calls, in order, and the main thread waits only as long as stated here.
class MpvCore {
public:
    /// Needs the "C" locale for numbers, which it sets for the process.
    MpvCore();
    /// Ends the player; waits at most 300 ms. One that hangs is left to the background.
    ~MpvCore();
    MpvCore(const MpvCore&) = delete;
    MpvCore& operator=(const MpvCore&) = delete;

    /// Returns at once, as `set` does.
    void command(std::initializer_list<const char*> arguments);
    /// Loads the file and waits until it can be played, but no longer than the limit.
    Expected<void> load(const std::string& location, std::chrono::milliseconds limit);

    /// The property's value after the calls before; nullopt when it has none now, or when the player does not
    /// answer within half a second.
    std::optional<double> number(const char* property);
    std::optional<bool> flag(const char* property);
    void set(const char* property, const char* value);

    // The core answers these with events, so that nobody waits for it.
    void requestNumber(const char* property);
    void observeFlag(const char* property);
    /// Whether events may have arrived since this was last asked; whoever hears yes takes them all.
    bool hasNews() { return news_.exchange(false); }
    /// The next event that has arrived, its kind MPV_EVENT_NONE when there is none. Valid until the next
    /// call.
    const mpv_event& nextEvent();

private:
    Expected<void> awaitLoaded(std::chrono::milliseconds limit);

    mpv_handle* handle_; ///< null when libmpv could not be started; every call then does nothing
    DetachedQueue calls_;
    std::atomic<bool> news_ = true;
};

} // namespace orvalen
