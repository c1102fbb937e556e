#pragma once

#include "app/state/ContentView.h"

#include <QObject>
#include <chrono>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace orvalen::bench {

/// Measures the phases of scans, from the click to the frame that shows the message. Observes the state, the
/// events of dialogs, and the files in the user's folders. Main thread; must outlive the state.
class ScanTimeline : public QObject {
public:
    /// `home` is the folder of the application's data. Both it and its folder "Orvalen" must exist.
    ScanTimeline(ContentView& view, const std::string& home);

    /// Starts a new measurement.
    void click();
    bool isMessageShown() const { return isShown_; }

    struct Phase {
        const char* name;
        double milliseconds;
    };
    /// Returns the phases of a scan whose message is shown, and their sum at the end.
    std::vector<Phase> phases();

protected:
    bool eventFilter(QObject* receiver, QEvent* event) override;

private:
    using Clock = std::chrono::steady_clock;
    enum class Mark { listed, read, finished, replaced, database, libraryFile, backup, dialog, shown };

    void setFirst(Mark mark);
    void setLast(Mark mark);
    void watchFiles(const std::stop_token& stop, const std::string& home);
    void takeFileEvent(std::string_view name, unsigned mask);

    ContentView& view_;
    bool isShown_ = false;
    std::mutex mutex_;
    std::map<Mark, Clock::time_point> marks_; ///< guarded by mutex_
    Clock::time_point click_;
    std::jthread fileWatch_;
};

} // namespace orvalen::bench
