#pragma once

#include "core/Error.h"

#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace orvalen {

enum class CachePolicy { protocolDefault, reloadIgnoringCache };

struct HttpRequest {
    std::string address;
    std::string method = "GET";
    std::vector<std::pair<std::string, std::string>> headers;
    std::string body;
    CachePolicy cachePolicy = CachePolicy::protocolDefault;
    std::chrono::milliseconds timeout{60'000};
};

struct HttpResponse {
    int status = 0;
    std::string body;
};

/// Sends HTTP requests.
class HttpSession {
public:
    virtual ~HttpSession() = default;
    /// Returns at once. Calls `answer` once, later, on the main thread. A response of any status is a result.
    /// Errors are an invalid address, no connection, an untrusted certificate, or a time-out.
    virtual void send(const HttpRequest& request, std::function<void(Expected<HttpResponse>)> answer) = 0;
};

} // namespace orvalen
