#pragma once

#include "platform/HttpSession.h"

#include <memory>

class QNetworkAccessManager;

namespace orvalen {

/// Sends HTTP and HTTPS requests with Qt. HTTPS trusts the system's certificates only.
///
/// Follows at most 20 redirects, and none from https to http. A redirect to another server removes the
/// Authorization header. The time-out restarts whenever bytes arrive. A body of more than 64 MB is an error,
/// and so is a final status below 200. Each request is sent once, on its own connection. A connection that
/// closes without an answer is an error. Main thread. Needs the application object. Requests that are open
/// when the session is destroyed are never answered.
class QtHttpSession : public HttpSession {
public:
    QtHttpSession();
    ~QtHttpSession() override;
    QtHttpSession(const QtHttpSession&) = delete;
    QtHttpSession& operator=(const QtHttpSession&) = delete;

    void send(const HttpRequest& request, std::function<void(Expected<HttpResponse>)> answer) override;

private:
    std::unique_ptr<QNetworkAccessManager> manager_;
};

} // namespace orvalen
