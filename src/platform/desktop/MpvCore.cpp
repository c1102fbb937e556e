#include "platform/desktop/MpvCore.h"

#include "platform/desktop/MpvLibrary.h"

#include <array>
#include <clocale>
#include <cstring>
#include <vector>

namespace orvalen {

namespace {

constexpr std::chrono::milliseconds endLimit{300};

struct Option {
    const char* name;
    const char* value;
};

/// Errors are ignored: an option that a later libmpv does not know belongs to a feature that it does not
/// have.
constexpr Option options[] = {
    // No user configuration, and no files beside the opened one.
    {"config", "no"},
    {"load-scripts", "no"},
    {"ytdl", "no"},
    {"osc", "no"},
    {"load-stats-overlay", "no"},
    {"load-osd-console", "no"},
    {"load-auto-profiles", "no"},
    {"input-default-bindings", "no"},
    {"input-builtin-bindings", "no"},
    {"input-vo-keyboard", "no"},
    {"input-media-keys", "no"},
    {"terminal", "no"},
    {"resume-playback", "no"},
    {"save-position-on-quit", "no"},
    {"audio-file-auto", "no"},
    {"cover-art-auto", "no"},
    {"sub-auto", "no"},
    {"autoload-files", "no"},
    {"autocreate-playlist", "no"},
    // Sound only.
    {"video", "no"},
    {"audio-display", "no"},
    {"sid", "no"},
    // Prevents playlists and references in files from opening other files.
    {"demuxer", "lavf"},
    {"access-references", "no"},
    {"load-unsafe-playlists", "no"},
    {"ordered-chapters", "no"},
    {"cache", "no"},
    // Otherwise the end is reported up to 0.2 s too early.
    {"gapless-audio", "no"},
    // At the end, the player pauses and keeps the file.
    {"idle", "yes"},
    {"keep-open", "yes"},
    {"pause", "yes"},
    // Without SDL, whose sound output has one state for all players: two that start at once would crash.
    {"ao", "pipewire,pulse,alsa,jack"},
    {"audio-fallback-to-null", "yes"},
    {"ao-null-untimed", "no"},
    {"audio-client-name", "Orvalen"},
};

/// Restricts the formats that the demuxer detects. In particular, excludes playlists.
void allowOnlyAudioFormats(const MpvLibrary& mpv, mpv_handle* handle) {
    // Passed as a node, because the value contains commas, which separate options in text form.
    char key[] = "format_whitelist";
    char formats[] = "mp3,mov,wav,w64,aiff,aac,flac,ogg";
    char* keys[] = {key};
    mpv_node value{};
    value.format = MPV_FORMAT_STRING;
    value.u.string = formats;
    mpv_node_list list{1, &value, keys};
    mpv_node map{};
    map.format = MPV_FORMAT_NODE_MAP;
    map.u.list = &list;
    mpv.setOption(handle, "demuxer-lavf-o", MPV_FORMAT_NODE, &map);
}

mpv_handle* start(const MpvLibrary& mpv) {
    if (std::strcmp(std::setlocale(LC_NUMERIC, nullptr), "C") != 0)
        std::setlocale(LC_NUMERIC, "C");
    mpv_handle* handle = mpv.create();
    if (!handle)
        return nullptr;
    for (const Option& option : options)
        mpv.setOptionString(handle, option.name, option.value);
    allowOnlyAudioFormats(mpv, handle);
    if (mpv.initialize(handle) >= 0)
        return handle;
    mpv.terminateDestroy(handle);
    return nullptr;
}

template <typename Value>
std::optional<Value> read(DetachedQueue& calls, const MpvLibrary* mpv, mpv_handle* handle,
                          const char* property, mpv_format format, std::chrono::milliseconds limit) {
    if (!handle)
        return std::nullopt;
    const auto value =
        calls.ask(limit, [mpv, handle, property = std::string(property), format]() -> std::optional<Value> {
            Value result{};
            if (mpv->getProperty(handle, property.c_str(), format, &result) < 0)
                return std::nullopt;
            return result;
        });
    return value.value_or(std::nullopt);
}

} // namespace

MpvCore::MpvCore() : mpv_(MpvLibrary::load()), handle_(mpv_ ? start(*mpv_) : nullptr) {
    if (!handle_)
        return;
    const auto wakeUp = [](void* news) { static_cast<std::atomic<bool>*>(news)->store(true); };
    mpv_->setWakeupCallback(handle_, wakeUp, &news_);
}

MpvCore::~MpvCore() {
    if (!handle_)
        return;
    mpv_->setWakeupCallback(handle_, nullptr, nullptr);
    calls_.ask(endLimit, [mpv = mpv_, handle = handle_] {
        mpv->terminateDestroy(handle);
        return true;
    });
}

void MpvCore::command(std::initializer_list<const char*> arguments) {
    if (!handle_)
        return;
    calls_.post(
        [mpv = mpv_, handle = handle_, words = std::vector<std::string>(arguments.begin(), arguments.end())] {
            std::vector<const char*> terminated;
            terminated.reserve(words.size() + 1);
            for (const std::string& word : words)
                terminated.push_back(word.c_str());
            terminated.push_back(nullptr);
            mpv->command(handle, terminated.data());
        });
}

Expected<void> MpvCore::load(const std::string& location, std::chrono::milliseconds limit) {
    if (!handle_)
        return failure("The player cannot be started");
    command({"loadfile", location.c_str()});
    return awaitLoaded(limit);
}

Expected<void> MpvCore::awaitLoaded(std::chrono::milliseconds limit) {
    const auto deadline = std::chrono::steady_clock::now() + limit;
    bool started = false; // before that, events concern the previous file
    for (;;) {
        const std::chrono::duration<double> left = deadline - std::chrono::steady_clock::now();
        if (left.count() <= 0)
            return failure("The drive does not answer");
        const mpv_event* event = mpv_->waitEvent(handle_, left.count());
        if (event->event_id == MPV_EVENT_START_FILE)
            started = true;
        if (event->event_id == MPV_EVENT_FILE_LOADED && started)
            return {};
        if (event->event_id == MPV_EVENT_SHUTDOWN)
            return failure("The player has stopped");
        if (event->event_id == MPV_EVENT_END_FILE && started)
            return failure(mpv_->errorString(static_cast<const mpv_event_end_file*>(event->data)->error));
    }
}

std::optional<double> MpvCore::number(const char* property, std::chrono::milliseconds limit) {
    return read<double>(calls_, mpv_, handle_, property, MPV_FORMAT_DOUBLE, limit);
}

std::optional<bool> MpvCore::flag(const char* property) {
    const auto value = read<int>(calls_, mpv_, handle_, property, MPV_FORMAT_FLAG, answerLimit);
    return value ? std::optional(*value != 0) : std::nullopt;
}

void MpvCore::set(const char* property, const char* value) {
    if (handle_)
        calls_.post(
            [mpv = mpv_, handle = handle_, property = std::string(property), value = std::string(value)] {
                mpv->setPropertyString(handle, property.c_str(), value.c_str());
            });
}

void MpvCore::requestNumber(const char* property) {
    if (handle_)
        mpv_->getPropertyAsync(handle_, 0, property, MPV_FORMAT_DOUBLE);
}

void MpvCore::observeFlag(const char* property) {
    if (handle_)
        mpv_->observeProperty(handle_, 0, property, MPV_FORMAT_FLAG);
}

const mpv_event& MpvCore::nextEvent() {
    static const mpv_event none{};
    return handle_ ? *mpv_->waitEvent(handle_, 0) : none;
}

} // namespace orvalen
