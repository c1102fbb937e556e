#pragma once

#include <QApplication>
#include <QBasicTimer>
#include <QString>
#include <chrono>
#include <vector>

namespace orvalen::bench {

/// An application that measures gaps of its main loop. A timer fires every millisecond; the time between two
/// of its calls is a gap. Time in which the main thread waited for a processor is not counted, so that
/// results do not depend on other processes.
class LoopProbe : public QApplication {
public:
    struct Gap {
        double milliseconds = 0; ///< length of the gap, without waiting for a processor
        double processor = 0;    ///< the part of it in which the main thread ran
        QString event;           ///< what took most of it: the receiver's class and the event's type
    };

    LoopProbe(int& argc, char** argv);

    /// The gaps since the last takeGaps(): the longest, and all that are longer than `tellableMilliseconds`.
    struct Gaps {
        Gap longest;
        std::vector<Gap> tellable;
    };
    Gaps takeGaps();

    static constexpr double tellableMilliseconds = 50;

protected:
    bool notify(QObject* receiver, QEvent* event) override;
    void timerEvent(QTimerEvent* event) override;

private:
    using Clock = std::chrono::steady_clock;

    void beat();

    QBasicTimer timer_;
    Clock::time_point lastBeat_;
    double lastProcessor_ = 0;
    double lastWaited_ = 0;
    double longestEvent_ = 0;
    QString event_;
    Gaps gaps_;
};

} // namespace orvalen::bench
