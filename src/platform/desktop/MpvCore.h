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

struct MpvLibrary;

/// One player of libmpv: sound only, without user configuration or scripts. Opens nothing except what load()
/// and command() name. Without a sound device, plays silently in real time. Main thread.
///
/// libmpv executes calls on its own thread, which blocks while it waits for a drive. A background thread
/// therefore makes all calls that wait for libmpv, in order. The main thread waits only as long as stated
/// below.
class MpvCore {
public:
    static constexpr std::chrono::milliseconds answerLimit{500};

    /// Sets the process's locale for numbers to "C", which libmpv needs. Loads libmpv if it is not loaded,
    /// which takes 0.1 to 0.4 s.
    MpvCore();
    /// Ends the player. Waits at most 300 ms; a player that blocks is left to the background thread.
    ~MpvCore();
    MpvCore(const MpvCore&) = delete;
    MpvCore& operator=(const MpvCore&) = delete;

    /// Sends a command and returns at once.
    void command(std::initializer_list<const char*> arguments);
    /// Loads a file and waits until it can be played, at most `limit`.
    Expected<void> load(const std::string& location, std::chrono::milliseconds limit);

    /// Returns the value of the property after all earlier calls. Returns nullopt if it has none now, or if
    /// the player does not answer within `limit`.
    std::optional<double> number(const char* property, std::chrono::milliseconds limit = answerLimit);
    std::optional<bool> flag(const char* property);
    /// Sets a property and returns at once.
    void set(const char* property, const char* value);

    // libmpv answers these calls with events. They return at once.
    void requestNumber(const char* property);
    void observeFlag(const char* property);
    /// Returns whether events may have arrived since the last call. If so, take all events.
    bool hasNews() { return news_.exchange(false); }
    /// Returns the next event; its kind is MPV_EVENT_NONE if no event waits. Valid until the next call.
    const mpv_event& nextEvent();

private:
    Expected<void> awaitLoaded(std::chrono::milliseconds limit);

    const MpvLibrary* mpv_; ///< null if libmpv could not be loaded
    mpv_handle* handle_;    ///< null if libmpv could not be started; all calls then do nothing
    DetachedQueue calls_;
    std::atomic<bool> news_ = true;
};

} // namespace orvalen
