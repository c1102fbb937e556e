#pragma once

#include "core/Error.h"

#include <atomic>
#include <chrono>
#include <initializer_list>
#include <optional>
#include <string>

struct mpv_handle;
struct mpv_event;

namespace orvalen {

/// One player of libmpv: sound only, no user configuration, no scripts, and nothing opened but what it is
/// told to load. Plays silently, in real time, where no sound device is to be had. Main thread.
class MpvCore {
public:
    /// Needs the "C" locale for numbers, which it sets for the process.
    MpvCore();
    ~MpvCore();
    MpvCore(const MpvCore&) = delete;
    MpvCore& operator=(const MpvCore&) = delete;

    /// False when libmpv could not be started; everything else then does nothing.
    explicit operator bool() const { return handle_ != nullptr; }

    void command(std::initializer_list<const char*> arguments);
    /// Loads the file and waits until it can be played, but no longer than the limit.
    Expected<void> load(const std::string& location, std::chrono::milliseconds limit);

    /// Waits for the core; nothing when the property has no value now.
    std::optional<double> number(const char* property) const;
    std::optional<bool> flag(const char* property) const;
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

    mpv_handle* handle_;
    std::atomic<bool> news_ = true;
};

} // namespace orvalen
