#pragma once

#include "platform/MainQueue.h"

#include <memory>

namespace orvalen {

/// The main queue on the event loop of the thread that creates it. Needs a QCoreApplication. If a post opens
/// a modal dialog, later posts run meanwhile, in order. Many posts run in slices, so that input and painting
/// get their turn in between.
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
