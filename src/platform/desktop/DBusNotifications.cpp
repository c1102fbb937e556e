#include "platform/desktop/DBusNotifications.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QStringList>
#include <QVariantMap>

namespace orvalen {

namespace {

constexpr int answerLimit = 2000; ///< milliseconds

QDBusMessage notifyCall(const Notification& notification) {
    const uint replacesNothing = 0;
    const int serviceDecides = -1;
    const QVariantMap hints{{"sound-name", "message-new-instant"}, {"desktop-entry", "org.orvalen.Orvalen"}};
    QDBusMessage call =
        QDBusMessage::createMethodCall("org.freedesktop.Notifications", "/org/freedesktop/Notifications",
                                       "org.freedesktop.Notifications", "Notify");
    call << "Orvalen" << replacesNothing << "org.orvalen.Orvalen"
         << QString::fromStdString(notification.title) << QString::fromStdString(notification.body)
         << QStringList() << hints << serviceDecides;
    return call;
}

} // namespace

void DBusNotifications::post(const Notification& notification,
                             std::function<void(std::optional<Error>)> outcome) {
    // Without a bus, the call fails asynchronously like any other.
    const QDBusPendingCall call =
        QDBusConnection::sessionBus().asyncCall(notifyCall(notification), answerLimit);
    auto* watcher = new QDBusPendingCallWatcher(call);
    QObject::connect(watcher, &QDBusPendingCallWatcher::finished, watcher,
                     [watcher, outcome = std::move(outcome)] {
                         watcher->deleteLater();
                         if (watcher->isError())
                             outcome(Error{watcher->error().message().toStdString()});
                         else
                             outcome(std::nullopt);
                     });
}

} // namespace orvalen
