#include "platform/desktop/MpvAudioPlayers.h"

#include "platform/desktop/MpvCore.h"
#include "platform/desktop/MpvLibrary.h"
#include "platform/system/DetachedQueue.h"
#include "platform/tags/ByteSource.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <filesystem>
#include <optional>

namespace orvalen {

namespace {

using Clock = std::chrono::steady_clock;

/// The time limit for opening a file. Before that, checking access to its folder may take 500 ms.
constexpr std::chrono::milliseconds openLimit{2500};

std::chrono::milliseconds timeLeft(Clock::time_point deadline) {
    return std::max(std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()),
                    std::chrono::milliseconds(0));
}

/// The longest time for which positions are extrapolated before libmpv is asked again.
constexpr std::chrono::milliseconds answerLife{200};

/// Returns the number in the form that libmpv reads in every locale.
std::string toText(double seconds) {
    char buffer[64];
    const auto result =
        std::to_chars(std::begin(buffer), std::end(buffer), seconds, std::chars_format::fixed, 6);
    return {buffer, result.ptr};
}

/// The window asks for the position a hundred times a second. To avoid waiting for libmpv, the position is
/// extrapolated from its last answer and the clock.
class MpvAudioPlayer : public AudioPlayer {
public:
    Expected<void> open(std::string path, std::chrono::milliseconds limit) {
        path_ = std::move(path);
        core_.observeFlag("eof-reached");
        return load(0, limit);
    }

    void prepareToPlay() override {}

    void play() override {
        followEvents();
        if (!loaded_ && !load(position_.seconds, openLimit))
            return;
        if (isAtEnd())
            seek(0);
        core_.set("pause", "no");
        playing_ = true;
        moving_ = false;
    }

    void pause() override {
        followEvents();
        core_.set("pause", "yes");
        if (loaded_ && playing_ && !target_)
            position_.seconds = std::max(0.0, core_.number("time-pos").value_or(position_.seconds));
        playing_ = false;
    }

    void stop() override {
        pause();
        position_.seconds = isAtEnd() ? 0 : currentTime();
        core_.command({"stop"}); // closes the file and the sound device
        loaded_ = false;
    }

    bool isPlaying() const override {
        followEvents();
        return playing_;
    }

    double currentTime() const override {
        followEvents();
        if (target_)
            return *target_;
        if (!playing_)
            return position_.seconds;
        const std::chrono::duration<double> since = Clock::now() - position_.at;
        if (!moving_ || since > answerLife)
            askForPosition();
        return moving_ ? std::min(position_.seconds + since.count(), duration_) : position_.seconds;
    }

    void setCurrentTime(double seconds) override {
        followEvents();
        if (loaded_ && (playing_ || !isPastLength(seconds)))
            return seek(seconds);
        // No seek: if the player is closed, load() uses the position; past the end, play() starts at 0.
        target_.reset();
        position_.seconds = seconds;
    }

    double duration() const override { return duration_; }

private:
    /// A position at a point in time.
    struct Position {
        double seconds = 0;
        Clock::time_point at = Clock::now();
    };

    Expected<void> load(double start, std::chrono::milliseconds limit) {
        const auto deadline = Clock::now() + limit;
        core_.set("start", toText(start).c_str());
        if (auto loaded = core_.load(path_, limit); !loaded)
            return loaded;
        loaded_ = true;
        ended_ = false;
        target_.reset();
        position_ = Position{start, Clock::now()};
        // Positions are limited to the duration, so a busy system gets the rest of the time to report it.
        duration_ =
            core_.number("duration", std::max(MpvCore::answerLimit, timeLeft(deadline))).value_or(duration_);
        return {};
    }

    bool isPastLength(double seconds) const { return duration_ > 0 && seconds >= duration_; }

    /// Returns whether playback is at the end. Also looks at positions, because libmpv reports no end if a
    /// seek reaches it during a pause. Looks at the seek's target first: until then, libmpv returns the old
    /// position.
    bool isAtEnd() {
        if (target_)
            return isPastLength(*target_);
        return ended_ || isPastLength(currentTime()) || core_.flag("eof-reached").value_or(false);
    }

    void seek(double seconds) {
        target_ = seconds;
        ended_ = moving_ = false;
        core_.command({"seek", toText(seconds).c_str(), "absolute+exact"});
    }

    void askForPosition() const {
        if (asked_)
            return;
        asked_ = Clock::now();
        core_.requestNumber("time-pos");
    }

    void followEvents() const {
        if (!core_.hasNews())
            return;
        for (;;) {
            const mpv_event& event = core_.nextEvent();
            switch (event.event_id) {
            case MPV_EVENT_NONE:
                return;
            case MPV_EVENT_GET_PROPERTY_REPLY:
                takePosition(event);
                break;
            case MPV_EVENT_PROPERTY_CHANGE:
                takeEnd(*static_cast<const mpv_event_property*>(event.data));
                break;
            case MPV_EVENT_PLAYBACK_RESTART:
                if (target_)
                    position_ = Position{*target_, Clock::now()};
                target_.reset();
                break;
            case MPV_EVENT_END_FILE:
                loaded_ = playing_ = false;
                break;
            default:
                break;
            }
        }
    }

    void takePosition(const mpv_event& event) const {
        const auto* property = static_cast<const mpv_event_property*>(event.data);
        // An answer to a request from before a seek or pause is out of date.
        if (event.error >= 0 && property->format == MPV_FORMAT_DOUBLE && asked_ && playing_ && !target_) {
            const double seconds = std::max(0.0, *static_cast<const double*>(property->data));
            moving_ = moving_ || seconds > position_.seconds;
            position_ = Position{seconds, *asked_};
        }
        asked_.reset();
    }

    void takeEnd(const mpv_event_property& property) const {
        ended_ = property.format == MPV_FORMAT_FLAG && *static_cast<const int*>(property.data) != 0;
        if (ended_ && playing_) {
            position_.seconds = duration_;
            playing_ = false;
        }
    }

    std::string path_;
    double duration_ = 0;
    // The last known state of libmpv. Const functions update it from events.
    mutable MpvCore core_;
    mutable bool loaded_ = false;
    mutable bool playing_ = false;
    mutable bool moving_ = false; ///< the position has advanced since the last start or seek
    mutable bool ended_ = false;
    mutable std::optional<double> target_; ///< position of a seek that is not done yet
    mutable Position position_;            ///< while not playing, only `seconds` is used
    mutable std::optional<Clock::time_point> asked_;
};

} // namespace

Expected<std::unique_ptr<AudioPlayer>> MpvAudioPlayers::open(const std::string& path) {
    MpvLibrary::load(); // before the deadline is computed, because loading needs time but no music drive
    const auto deadline = Clock::now() + openLimit;
    DetachedQueue queue;
    const auto file = queue.ask(openLimit, [path] { return openRegularFile(path); });
    if (!file)
        return failure("The drive does not answer");
    if (!*file)
        return tl::make_unexpected(file->error());
    std::error_code error;
    // libmpv never takes an absolute path for an address.
    const std::filesystem::path absolute = std::filesystem::absolute(path, error);
    if (error)
        return failure(error.message());
    auto player = std::make_unique<MpvAudioPlayer>();
    if (auto opened = player->open(absolute.string(), timeLeft(deadline)); !opened)
        return tl::make_unexpected(opened.error());
    return player;
}

} // namespace orvalen
