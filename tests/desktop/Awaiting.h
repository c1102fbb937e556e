#pragma once

#include "desktop/EventLoop.h"
#include "platform/HttpSession.h"

#include <gtest/gtest.h>
#include <optional>

namespace orvalen::test {

/// Sends the request and turns the event loop until the answer is there.
inline Expected<HttpResponse> await(HttpSession& session, const HttpRequest& request) {
    std::optional<Expected<HttpResponse>> answer;
    session.send(request, [&](Expected<HttpResponse> response) { answer = std::move(response); });
    EXPECT_TRUE(turnUntil([&] { return answer.has_value(); }, std::chrono::seconds(30))) << request.address;
    return answer.value_or(failure("no answer"));
}

} // namespace orvalen::test
