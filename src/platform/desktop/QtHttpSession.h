#pragma once

#include "platform/HttpSession.h"

#include <memory>

class QNetworkAccessManager;

namespace orvalen {

/// HTTP and HTTPS over the toolkit's network access. HTTPS trusts the system's certificates and nothing else.
///
/// Redirects are followed, 20 at the most and never from https to http; a request that is sent on to another
/// server leaves its authorization behind. The time-out is the longest silence: it starts anew whenever bytes
/// arrive. A body of more than 64 MB is an error. Main thread, within the life of the application object;
/// requests that are open when the session ends are never answered.
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
