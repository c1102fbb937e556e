#include "platform/desktop/QtHttpSession.h"

#include <QIODevice>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QObject>
#include <QTimer>
#include <QUrl>
#include <utility>

namespace orvalen {
namespace {

constexpr std::size_t bodyLimit = std::size_t{64} << 20;
constexpr int redirectLimit = 20;
/// The largest number of bytes that Qt buffers. Without this limit, Qt could buffer a whole body before the
/// check against `bodyLimit`.
constexpr qint64 readAhead = qint64{4} << 20;

bool isSecure(const QUrl& url) {
    return url.scheme() == "https";
}

bool isWeb(const QUrl& url) {
    return url.isValid() && (isSecure(url) || url.scheme() == "http") && !url.host().isEmpty();
}

bool isSameServer(const QUrl& left, const QUrl& right) {
    const auto port = [](const QUrl& url) { return url.port(isSecure(url) ? 443 : 80); };
    return left.scheme() == right.scheme() && left.host() == right.host() && port(left) == port(right);
}

bool isRedirect(int status) {
    return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

/// Returns whether the reply is an answer of the server. Qt reports a status of 400 and above as an error,
/// too.
bool isAnswer(QNetworkReply::NetworkError error, int status) {
    if (status < 200)
        return false;
    const bool ofTransport = error < QNetworkReply::ContentAccessDenied ||
                             error == QNetworkReply::ProtocolUnknownError ||
                             error == QNetworkReply::ProtocolFailure;
    return error == QNetworkReply::NoError || (status >= 400 && !ofTransport);
}

/// A request body that can be rewound only after allowRewind(). If a connection is closed without an answer,
/// Qt rewinds the body and sends the request again. If it cannot rewind, it reports an error.
class OneTimeBody : public QIODevice {
public:
    explicit OneTimeBody(const std::string& bytes) : bytes_(bytes) { open(ReadOnly | Unbuffered); }

    void allowRewind() { mayRewind_ = true; }
    qint64 size() const override { return static_cast<qint64>(bytes_.size()); }
    bool reset() override { return mayRewind_ && QIODevice::reset(); }

protected:
    qint64 readData(char* destination, qint64 limit) override {
        return static_cast<qint64>(
            bytes_.copy(destination, static_cast<std::size_t>(limit), static_cast<std::size_t>(pos())));
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    const std::string bytes_;
    bool mayRewind_ = false;
};

/// Returns whether the text is a single line. A line break in a header would add another header.
bool isOneLine(const std::string& text) {
    return text.find_first_of(std::string_view("\r\n\0", 3)) == std::string::npos;
}

QByteArray bytes(const std::string& text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

/// Changes the request for a redirect.
void redirect(HttpRequest& request, int status, const QUrl& from, const QUrl& to) {
    const bool becomesGet = status == 303 || (status < 303 && request.method == "POST");
    if (becomesGet) {
        request.method = "GET";
        request.body.clear();
    }
    std::erase_if(request.headers, [&](const auto& header) {
        const QByteArray name = bytes(header.first).toLower();
        return (becomesGet && name == "content-type") || (!isSameServer(from, to) && name == "authorization");
    });
}

/// One request with its redirects, until the answer.
class Exchange : public QObject {
public:
    using Answer = std::function<void(Expected<HttpResponse>)>;

    Exchange(QNetworkAccessManager& manager, HttpRequest request, Answer answer)
        : QObject(&manager), manager_(manager), request_(std::move(request)), answer_(std::move(answer)),
          silence_(this) {
        silence_.setSingleShot(true);
        silence_.setTimerType(Qt::PreciseTimer); // other timer types may fire early
        silence_.setInterval(request_.timeout);
        connect(&silence_, &QTimer::timeout, this, [this] { fail("The request timed out."); });
    }

    void begin() {
        const QUrl url = QUrl::fromEncoded(bytes(request_.address), QUrl::StrictMode);
        if (!isWeb(url))
            return failLater("The address is not valid.");
        for (const auto& [name, value] : request_.headers)
            if (!isOneLine(name) || !isOneLine(value))
                return failLater("A header of the request is not valid.");
        send(url);
    }

private:
    void send(const QUrl& url) {
        QNetworkRequest request(url);
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
        // Uses a new connection per request: a server may close a kept connection at any time, and a failed
        // request is not repeated.
        request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
        request.setRawHeader("Connection", "close");
        if (request_.cachePolicy == CachePolicy::reloadIgnoringCache)
            request.setRawHeader("Cache-Control", "no-cache");
        request.setDecompressedSafetyCheckThreshold(-1); // bodyLimit limits the decompressed size
        for (const auto& [name, value] : request_.headers)
            request.setRawHeader(bytes(name), bytes(value));

        body_.clear();
        auto* body = new OneTimeBody(request_.body);
        reply_ = manager_.sendCustomRequest(request, bytes(request_.method), body);
        reply_->setParent(this);
        body->setParent(reply_);
        reply_->setReadBufferSize(readAhead);
        connect(reply_, &QNetworkReply::uploadProgress, this, [this] { silence_.start(); });
        connect(reply_, &QNetworkReply::metaDataChanged, this, [this, body] {
            silence_.start();
            // Qt rewinds the body for every redirect, even if we follow it ourselves.
            if (isRedirect(status()))
                body->allowRewind();
        });
        connect(reply_, &QNetworkReply::readyRead, this, [this] { readOn(); });
        connect(reply_, &QNetworkReply::finished, this, [this] { replyFinished(); });
        silence_.start();
    }

    void readOn() {
        silence_.start();
        constexpr qint64 step = qint64{256} << 10;
        for (QByteArray more = reply_->read(step); !more.isEmpty(); more = reply_->read(step)) {
            if (body_.size() + static_cast<std::size_t>(more.size()) > bodyLimit)
                return fail("The answer is too large.");
            body_.append(more.constData(), static_cast<std::size_t>(more.size()));
        }
    }

    void replyFinished() {
        readOn();
        if (!answer_)
            return;
        const int status = this->status();
        if (reply_->error() == QNetworkReply::ContentReSendError)
            return fail("The connection was closed without an answer.");
        if (reply_->error() == QNetworkReply::NoError && status < 200)
            return fail("The server sent no final answer.");
        if (!isAnswer(reply_->error(), status))
            return fail(reply_->errorString().toStdString());
        if (endedEarly(status))
            return fail("The connection was closed in the middle of the answer.");
        const QUrl target = reply_->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
        if (isRedirect(status) && !target.isEmpty())
            return follow(status, reply_->url().resolved(target));
        finish(HttpResponse{status, std::move(body_)});
    }

    int status() const { return reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(); }

    /// Returns whether the body is shorter than announced. Qt accepts some of these bodies.
    bool endedEarly(int status) const {
        bool announced = false;
        const auto length = reply_->rawHeader("Content-Length").toULongLong(&announced);
        return announced && body_.size() < length && status != 204 && status != 304;
    }

    void follow(int status, const QUrl& target) {
        const QUrl source = reply_->url();
        if (++redirects_ > redirectLimit)
            return fail("The server redirected too often.");
        if (!isWeb(target) || (isSecure(source) && !isSecure(target)))
            return fail("The server redirected to an address that is not safe.");
        redirect(request_, status, source, target);
        letGoOfReply();
        send(target);
    }

    void fail(const std::string& description) { finish(failure(description)); }

    /// Fails after the caller has returned, because answers arrive later.
    void failLater(const char* description) {
        QTimer::singleShot(0, this, [this, description] { fail(description); });
    }

    void finish(Expected<HttpResponse> outcome) {
        if (!answer_)
            return;
        silence_.stop();
        letGoOfReply();
        deleteLater();
        const Answer answer = std::exchange(answer_, nullptr);
        answer(std::move(outcome));
    }

    void letGoOfReply() {
        if (QNetworkReply* reply = std::exchange(reply_, nullptr)) {
            reply->disconnect(this);
            reply->abort();
            reply->deleteLater();
        }
    }

    QNetworkAccessManager& manager_;
    HttpRequest request_;
    Answer answer_;
    QTimer silence_;
    QNetworkReply* reply_ = nullptr;
    std::string body_;
    int redirects_ = 0;
};

} // namespace

QtHttpSession::QtHttpSession() : manager_(std::make_unique<QNetworkAccessManager>()) {}

QtHttpSession::~QtHttpSession() = default;

void QtHttpSession::send(const HttpRequest& request, std::function<void(Expected<HttpResponse>)> answer) {
    (new Exchange(*manager_, request, std::move(answer)))->begin();
}

} // namespace orvalen
