#include "platform/desktop/QtMainQueue.h"

#include <QBasicTimer>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEvent>
#include <QTimer>
#include <deque>
#include <mutex>

namespace orvalen {

namespace {

/// How long posts run before other events get their turn.
constexpr qint64 sliceMilliseconds = 4;

} // namespace

/// Runs posts from the event loop. While posts wait, exactly one wake-up is pending: an event, which any
/// thread may send, or a timer, which is used during and after a slice. The timer is needed because an event
/// that is sent during an event is delivered before other events get their turn.
class QtMainQueue::Pump : public QObject {
public:
    void post(Function function) {
        const std::lock_guard lock(mutex_);
        posts_.push_back(std::move(function));
        if (awake_)
            return;
        awake_ = true;
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }

protected:
    void customEvent(QEvent*) override { runSlice(); }
    void timerEvent(QTimerEvent*) override { runSlice(); }

private:
    void runSlice() {
        QElapsedTimer clock;
        clock.start();
        // Starts a new timer: the one that has fired does not fire again before its call returns, which a
        // modal dialog delays.
        timer_.stop();
        do {
            Function next = take();
            if (!next)
                return;
            next();
        } while (clock.elapsed() < sliceMilliseconds);
    }

    /// Returns the next post, or an empty function. Before it runs, a wake-up for further posts is pending.
    Function take() {
        const std::lock_guard lock(mutex_);
        awake_ = !posts_.empty();
        if (!awake_) {
            timer_.stop();
            return {};
        }
        if (!timer_.isActive())
            timer_.start(1, Qt::PreciseTimer, this);
        Function next = std::move(posts_.front());
        posts_.pop_front();
        return next;
    }

    QBasicTimer timer_;
    std::mutex mutex_;
    std::deque<Function> posts_; // under mutex_
    bool awake_ = false;         // under mutex_
};

namespace {

class RepeatingTimer : public Timer {
public:
    RepeatingTimer(std::chrono::milliseconds interval, MainQueue::Function function) : timer_(new QTimer) {
        timer_->setTimerType(Qt::PreciseTimer);
        QObject::connect(timer_, &QTimer::timeout, timer_, std::move(function));
        timer_->start(interval);
    }
    ~RepeatingTimer() override {
        // Deletes the timer later, because the handle can be destroyed inside the timer's own call.
        timer_->stop();
        timer_->deleteLater();
    }
    RepeatingTimer(const RepeatingTimer&) = delete;
    RepeatingTimer& operator=(const RepeatingTimer&) = delete;

private:
    QTimer* timer_;
};

} // namespace

QtMainQueue::QtMainQueue() : pump_(std::make_unique<Pump>()) {}

QtMainQueue::~QtMainQueue() = default;

void QtMainQueue::post(Function function) {
    pump_->post(std::move(function));
}

void QtMainQueue::after(std::chrono::milliseconds delay, Function function) {
    QTimer::singleShot(delay, Qt::PreciseTimer, pump_.get(), std::move(function));
}

TimerHandle QtMainQueue::every(std::chrono::milliseconds interval, Function function) {
    return std::make_shared<RepeatingTimer>(interval, std::move(function));
}

} // namespace orvalen
