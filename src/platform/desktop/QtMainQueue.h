#pragma once

#include "platform/MainQueue.h"

#include <memory>

namespace orvalen {

/// The main queue on the event loop of the thread that makes it, with a QCoreApplication standing. A modal
/// dialog that a post opens lets the later posts run, in order; a long line of posts is run in slices, so
/// that input and painting get their turn between them.
class QtMainQueue : public MainQueue {
public:
    QtMainQueue();
    ~QtMainQueue() override;

    void post(Function function) override;
    void after(std::chrono::milliseconds delay, Function function) override;
    TimerHandle every(std::chrono::milliseconds interval, Function function) override;

private:
    class Pump;
    std::unique_ptr<Pump> pump_;
};

} // namespace orvalen
