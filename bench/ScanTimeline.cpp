#include "ScanTimeline.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

namespace orvalen::bench {

ScanTimeline::ScanTimeline(ContentView& view, const std::string& home)
    : view_(view), fileWatch_([this, home](const std::stop_token& stop) { watchFiles(stop, home); }) {
    view.scanningFileName.observe([this] {
        const std::string& name = view_.scanningFileName.get();
        if (name.empty() || name == "Preparing scan…")
            return;
        setFirst(Mark::listed);
        setLast(Mark::read);
    });
    view.lastScan.observe([this] { setFirst(Mark::finished); });
    view.trackCount.observe([this] { setFirst(Mark::replaced); });
    qApp->installEventFilter(this);
}

void ScanTimeline::click() {
    const std::lock_guard lock(mutex_);
    marks_.clear();
    isShown_ = false;
    click_ = Clock::now();
}

std::vector<ScanTimeline::Phase> ScanTimeline::phases() {
    const std::lock_guard lock(mutex_);
    std::vector<Phase> result;
    auto before = click_;
    const auto add = [&](const char* name, Mark mark) {
        const auto time = marks_.contains(mark) ? marks_[mark] : before;
        result.push_back({name, std::chrono::duration<double, std::milli>(time - before).count()});
        before = time;
    };
    add("walk", Mark::listed);
    add("tags", Mark::read);
    add("index", Mark::finished);
    add("views", Mark::replaced);
    add("database", Mark::database);
    add("library file", Mark::libraryFile);
    add("backup", Mark::backup);
    add("sound", Mark::dialog);
    add("message", Mark::shown);
    result.push_back({"total", std::chrono::duration<double, std::milli>(before - click_).count()});
    return result;
}

bool ScanTimeline::eventFilter(QObject* receiver, QEvent* event) {
    if (qobject_cast<QDialog*>(receiver) != nullptr) {
        setFirst(Mark::dialog); // the dialog receives events while it is created
        if (event->type() == QEvent::Paint) {
            setFirst(Mark::shown);
            isShown_ = true;
        }
    }
    return false;
}

void ScanTimeline::setFirst(Mark mark) {
    const std::lock_guard lock(mutex_);
    marks_.try_emplace(mark, Clock::now());
}

void ScanTimeline::setLast(Mark mark) {
    const std::lock_guard lock(mutex_);
    marks_[mark] = Clock::now();
}

void ScanTimeline::watchFiles(const std::stop_token& stop, const std::string& home) {
    const int watch = ::inotify_init1(IN_CLOEXEC | IN_NONBLOCK);
    for (const std::string& folder : {home, home + "/Orvalen"})
        ::inotify_add_watch(watch, folder.c_str(), IN_OPEN | IN_ACCESS | IN_MODIFY | IN_CLOSE_WRITE);
    alignas(inotify_event) char buffer[4096];
    while (!stop.stop_requested()) {
        pollfd ready{watch, POLLIN, 0};
        ::poll(&ready, 1, 100);
        const ssize_t length = ::read(watch, buffer, sizeof buffer);
        for (ssize_t place = 0; place < length;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer + place);
            if (event->len > 0)
                takeFileEvent(event->name, event->mask);
            place += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
    }
    ::close(watch);
}

/// The database is read or written last before the library file, and then again for the backup.
void ScanTimeline::takeFileEvent(std::string_view name, unsigned mask) {
    const std::lock_guard lock(mutex_);
    if (!marks_.contains(Mark::replaced))
        return;
    if (name.starts_with("orvalen.sqlite") && !marks_.contains(Mark::libraryFile))
        marks_[Mark::database] = Clock::now();
    else if (name == "library.orvl" && (mask & IN_CLOSE_WRITE) != 0)
        marks_[Mark::libraryFile] = Clock::now();
    else if (name.starts_with("library_backup") && (mask & IN_CLOSE_WRITE) != 0)
        marks_[Mark::backup] = Clock::now();
}

} // namespace orvalen::bench
