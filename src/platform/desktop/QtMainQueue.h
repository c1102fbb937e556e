#pragma once

#include "platform/MainQueue.h"

#include <memory>

namespace orvalen {

/// Runs posts and timers in the event loop of the thread that creates it. Needs a QCoreApplication. If a post
/// opens a modal dialog, later posts run meanwhile, in order. Many posts run in slices of a few milliseconds.
/// Between slices, the event loop handles input and painting.
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
