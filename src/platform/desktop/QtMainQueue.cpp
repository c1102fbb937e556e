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

/// The time after which the event loop handles other events before further posts run.
constexpr qint64 sliceMilliseconds = 4;

} // namespace

/// Runs posts from the event loop. While posts are queued, exactly one wake-up is pending: an event or a
/// timer. The first post sends the event. A slice starts the timer for the posts after it. It sends no event,
/// because Qt would deliver that event before input and painting.
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
        // Makes take() start a new timer. Qt does not fire a timer again while its event is being handled,
        // and a post that opens a modal dialog returns late.
        timer_.stop();
        do {
            Function next = take();
            if (!next)
                return;
            next();
        } while (clock.elapsed() < sliceMilliseconds);
    }

    /// Returns the next post, or an empty function. First starts the timer for the posts after it: if this
    /// post opens a modal dialog, they run meanwhile.
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
