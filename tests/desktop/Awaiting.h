#pragma once

#include "platform/HttpSession.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <chrono>
#include <gtest/gtest.h>
#include <optional>

namespace orvalen::test {

/// Runs the event loop until the condition holds; the test fails when that takes too long.
template <typename Condition>
void runEventsUntil(Condition condition) {
    QElapsedTimer time;
    time.start();
    while (!condition() && time.elapsed() < 30'000)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 20);
    EXPECT_TRUE(condition()) << "nothing came of it";
}

inline void runEventsFor(std::chrono::milliseconds duration) {
    QElapsedTimer time;
    time.start();
    while (time.elapsed() < duration.count())
        QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

/// Sends the request and waits for its answer.
inline Expected<HttpResponse> await(HttpSession& session, const HttpRequest& request) {
    std::optional<Expected<HttpResponse>> answer;
    session.send(request, [&](Expected<HttpResponse> response) { answer = std::move(response); });
    runEventsUntil([&] { return answer.has_value(); });
    return answer.value_or(failure("no answer"));
}

} // namespace orvalen::test
