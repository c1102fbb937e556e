#pragma once

#include "platform/AudioPlayer.h"
#include "platform/Browser.h"
#include "platform/Bundle.h"
#include "platform/Console.h"
#include "platform/DriveWatch.h"
#include "platform/FolderAccess.h"
#include "platform/HttpSession.h"
#include "platform/MediaAsset.h"
#include "platform/Notifications.h"
#include "platform/Sound.h"
#include "platform/UserFolders.h"
#include "platform/WorkerQueue.h"

#include <deque>
#include <filesystem>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace orvalen::test {

class FakeConsole : public Console {
public:
    void line(std::string_view text) override {
        const std::lock_guard lock(mutex_);
        lines_.emplace_back(text);
    }
    std::vector<std::string> lines() const {
        const std::lock_guard lock(mutex_);
        return lines_;
    }
    void clear() {
        const std::lock_guard lock(mutex_);
        lines_.clear();
    }

private:
    mutable std::mutex mutex_;
    std::vector<std::string> lines_;
};

/// Keeps jobs until the test runs them on its own thread.
class FakeWorkerQueue : public WorkerQueue {
public:
    void post(std::function<void()> job) override { jobs_.push_back(std::move(job)); }
    bool runOne() {
        if (jobs_.empty())
            return false;
        auto job = std::move(jobs_.front());
        jobs_.pop_front();
        job();
        return true;
    }
    std::size_t pending() const { return jobs_.size(); }

private:
    std::deque<std::function<void()>> jobs_;
};

/// The scripted tags of one file.
struct FakeTags {
    Expected<std::vector<MetadataItem>> common = std::vector<MetadataItem>();
    Expected<std::vector<std::string>> formats = std::vector<std::string>();
    Expected<std::vector<MetadataItem>> id3 = std::vector<MetadataItem>();
};

class FakeMediaAssets : public MediaAssets {
public:
    std::unique_ptr<MediaAsset> open(const std::string& path) override {
        struct Asset : MediaAsset {
            explicit Asset(FakeTags tags_) : tags(std::move(tags_)) {}
            Expected<std::vector<MetadataItem>> commonMetadata() override { return tags.common; }
            Expected<std::vector<std::string>> availableFormats() override { return tags.formats; }
            Expected<std::vector<MetadataItem>> id3Metadata() override { return tags.id3; }
            FakeTags tags;
        };
        opened.push_back(path);
        return std::make_unique<Asset>(tags[path]);
    }

    std::unique_ptr<MediaReadAhead> startReadAhead() override {
        struct ReadAhead : MediaReadAhead {
            explicit ReadAhead(FakeMediaAssets& assets_) : assets(assets_) {}
            void expect(const std::string& path) override { assets.expected.push_back(path); }
            void passOne() override { ++assets.passed; }
            FakeMediaAssets& assets;
        };
        return std::make_unique<ReadAhead>(*this);
    }

    std::map<std::string, FakeTags> tags; ///< paths that are missing here have no tags
    std::vector<std::string> opened;
    std::vector<std::string> expected; ///< files passed to expect()
    std::size_t passed = 0;            ///< number of passOne() calls
};

/// The actions and reported values of a fake player. Outlives the player, so that a test can check it
/// afterwards.
struct FakePlayback {
    std::string path;
    bool playing = false;
    double time = 0;
    double length = 100;
    std::vector<std::string> calls;
};

class FakeAudioPlayers : public AudioPlayers {
public:
    Expected<std::unique_ptr<AudioPlayer>> open(const std::string& path) override {
        struct Player : AudioPlayer {
            explicit Player(std::shared_ptr<FakePlayback> state_) : state(std::move(state_)) {}
            void prepareToPlay() override { state->calls.emplace_back("prepareToPlay"); }
            void play() override {
                state->calls.emplace_back("play");
                state->playing = true;
            }
            void pause() override {
                state->calls.emplace_back("pause");
                state->playing = false;
            }
            void stop() override {
                state->calls.emplace_back("stop");
                state->playing = false;
            }
            bool isPlaying() const override { return state->playing; }
            double currentTime() const override { return state->time; }
            void setCurrentTime(double seconds) override { state->time = seconds; }
            double duration() const override { return state->length; }
            std::shared_ptr<FakePlayback> state;
        };
        if (whenOpening)
            whenOpening(path);
        if (unplayable.contains(path))
            return failure("not a playable file");
        playbacks.push_back(std::make_shared<FakePlayback>());
        playbacks.back()->path = path;
        return std::make_unique<Player>(playbacks.back());
    }

    std::set<std::string> unplayable;
    std::vector<std::shared_ptr<FakePlayback>> playbacks;
    std::function<void(const std::string&)> whenOpening;
};

/// Grants access to all locations except refused ones. A bookmark is a prefix followed by the path.
class FakeFolderAccess : public FolderAccess {
public:
    bool start(const Location& location) override {
        if (refused.contains(location.path))
            return false;
        ++starts[location.path];
        return true;
    }
    void stop(const Location& location) override { --starts[location.path]; }
    bool isAway(const Location& location) override { return away.contains(location.path); }
    Expected<std::string> makeBookmark(const Location& location) override {
        if (withoutBookmark.contains(location.path))
            return failure("no bookmark");
        return "bookmark:" + location.path;
    }
    Expected<Location> resolveBookmark(std::string_view bookmark) override {
        if (!bookmark.starts_with("bookmark:"))
            return failure("not a bookmark");
        return Location{std::string(bookmark.substr(9))};
    }

    std::set<std::string> refused;
    std::set<std::string> away;
    std::set<std::string> withoutBookmark;
    std::map<std::string, int> starts; ///< starts without a stop
};

/// Reports only the locations that the test sets.
class FakeDriveWatch : public DriveWatch {
public:
    void watch(std::vector<Location> locations, Observer observer_) override {
        watched = std::move(locations);
        observer = std::move(observer_);
    }
    std::vector<Location> watched;
    Observer observer;
};

class FakeUserFolders : public UserFolders {
public:
    std::optional<std::string> applicationSupport() const override { return folder; }
    std::optional<std::string> folder;
};

class FakeNotifications : public Notifications {
public:
    void post(const Notification& notification, std::function<void(std::optional<Error>)> outcome) override {
        posted.push_back(notification);
        outcome(error);
    }
    std::vector<Notification> posted;
    std::optional<Error> error;
};

/// Records requests. The test answers them.
class FakeHttpSession : public HttpSession {
public:
    using Answer = std::function<void(Expected<HttpResponse>)>;
    void send(const HttpRequest& request, Answer answer) override {
        requests.push_back(request);
        waiting_.push_back(std::move(answer));
    }
    /// Answers the oldest pending request.
    void answer(Expected<HttpResponse> response) {
        Answer next = std::move(waiting_.at(0));
        waiting_.pop_front();
        next(std::move(response));
    }
    std::size_t pending() const { return waiting_.size(); }

    std::vector<HttpRequest> requests;

private:
    std::deque<Answer> waiting_;
};

class FakeSound : public Sound {
public:
    void play(std::string_view name) override { played.emplace_back(name); }
    std::vector<std::string> played;
};

class FakeBrowser : public Browser {
public:
    void open(const std::string& address) override { opened.push_back(address); }
    std::vector<std::string> opened;
};

class FakeBundle : public Bundle {
public:
    std::optional<std::string> text(std::string_view key) const override {
        const auto found = texts.find(std::string(key));
        return found == texts.end() ? std::nullopt : std::optional(found->second);
    }
    std::map<std::string, std::string> texts{{"CFBundleShortVersionString", "1.0"}, {"CFBundleVersion", "1"}};
};

} // namespace orvalen::test
