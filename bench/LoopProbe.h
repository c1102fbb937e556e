#pragma once

#include <QApplication>
#include <QBasicTimer>
#include <QString>
#include <chrono>
#include <vector>

namespace orvalen::bench {

/// An application that notes how long its main loop goes without a turn: a timer beats every millisecond,
/// and the time between two beats is a gap. What the thread spent waiting for a processor that others had is
/// not counted, so that a busy machine shows about the same as an idle one.
class LoopProbe : public QApplication {
public:
    struct Gap {
        double milliseconds = 0; ///< without the wait for a processor
        double processor = 0;    ///< of these, milliseconds in which the main thread ran
        QString event;           ///< what took most of it: the receiver's class and the event's type
    };

    LoopProbe(int& argc, char** argv);

    /// The gaps since this was last called: the longest of all, and each that is worth telling.
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
