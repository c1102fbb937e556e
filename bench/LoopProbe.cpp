#include "LoopProbe.h"

#include "ProcessorTime.h"

#include <QEvent>
#include <QMetaEnum>
#include <algorithm>
#include <fstream>
#include <utility>

namespace orvalen::bench {
namespace {

double millisecondsSince(std::chrono::steady_clock::time_point begin) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

/// Returns how long this thread was ready to run but had no processor.
double waitedMilliseconds() {
    std::ifstream stream("/proc/thread-self/schedstat");
    double ran = 0;
    double waited = 0;
    stream >> ran >> waited;
    return waited / 1e6;
}

} // namespace

LoopProbe::LoopProbe(int& argc, char** argv) : QApplication(argc, argv) {
    timer_.start(1, Qt::PreciseTimer, this);
    beat();
    takeGaps();
}

LoopProbe::Gaps LoopProbe::takeGaps() {
    return std::exchange(gaps_, {});
}

bool LoopProbe::notify(QObject* receiver, QEvent* event) {
    const auto begin = Clock::now();
    // Handling the event may delete the receiver and the event.
    const char* const receiverClass = receiver->metaObject()->className();
    const QEvent::Type type = event->type();
    const bool handled = QApplication::notify(receiver, event);
    // An event that opens a modal dialog is handled until the dialog closes. The timer runs meanwhile, so
    // only the time since its last call counts.
    const double took = millisecondsSince(std::max(begin, lastBeat_));
    if (took >= std::max(longestEvent_, 1.0)) {
        longestEvent_ = took;
        event_ = QString(receiverClass) + " " + QMetaEnum::fromType<QEvent::Type>().valueToKey(type);
    }
    return handled;
}

void LoopProbe::timerEvent(QTimerEvent* event) {
    if (event->timerId() == timer_.timerId())
        beat();
    else
        QApplication::timerEvent(event);
}

void LoopProbe::beat() {
    const double processor = processorMilliseconds();
    const double waited = waitedMilliseconds();
    const Gap gap{millisecondsSince(lastBeat_) - (waited - lastWaited_), processor - lastProcessor_, event_};
    if (gap.milliseconds > gaps_.longest.milliseconds)
        gaps_.longest = gap;
    if (gap.milliseconds > tellableMilliseconds)
        gaps_.tellable.push_back(gap);
    lastBeat_ = Clock::now();
    lastProcessor_ = processor;
    lastWaited_ = waited;
    longestEvent_ = 0;
    event_.clear();
}

} // namespace orvalen::bench
