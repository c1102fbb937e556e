#include "platform/desktop/DBusNotifications.h"

#include "desktop/BusService.h"
#include "desktop/EventLoop.h"

#include <QDBusContext>
#include <QVariantMap>
#include <gtest/gtest.h>
#include <optional>

namespace orvalen::test {

/// A notification service as a desktop provides it.
class NotificationService : public BusService, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    NotificationService() : BusService("org.freedesktop.Notifications", "/org/freedesktop/Notifications") {}

    struct Arrived {
        QString title;
        QString body;
        QVariantMap hints;
    };
    std::vector<Arrived> arrived;
    bool answers = true;

public slots:
    Q_SCRIPTABLE uint Notify(const QString&, uint, const QString&, const QString& title, const QString& body,
                             const QStringList&, const QVariantMap& hints, int) {
        arrived.push_back({title, body, hints});
        setDelayedReply(!answers); // delays the reply for ever
        return static_cast<uint>(arrived.size());
    }
};

namespace {

/// Posts a notification, waits for the outcome, and returns its error.
std::optional<Error> errorOf(const Notification& notification) {
    DBusNotifications notifications;
    std::optional<std::optional<Error>> outcome;
    notifications.post(notification, [&](std::optional<Error> error) { outcome = std::move(error); });
    EXPECT_FALSE(outcome) << "the outcome comes after the call";
    EXPECT_TRUE(turnUntil([&] { return outcome.has_value(); }));
    return outcome.value_or(std::nullopt);
}

TEST(DBusNotifications, ReachTheServiceWithTheirTextsAndTheSound) {
    NotificationService service;
    EXPECT_FALSE(errorOf({"id", "Serato Export", "Naïve – “text”"}));
    ASSERT_EQ(service.arrived.size(), 1U);
    EXPECT_EQ(service.arrived[0].title, "Serato Export");
    EXPECT_EQ(service.arrived[0].body, "Naïve – “text”");
    EXPECT_EQ(service.arrived[0].hints.value("sound-name").toString(), "message-new-instant");
}

TEST(DBusNotifications, DoNotWaitLongForAServiceThatHangs) {
    NotificationService service;
    service.answers = false;
    EXPECT_TRUE(errorOf({"id", "title", "body"}));
    EXPECT_EQ(service.arrived.size(), 1U);
}

TEST(DBusNotifications, ReportThatThereIsNoService) {
    const auto error = errorOf({"id", "title", "body"});
    ASSERT_TRUE(error);
    EXPECT_NE(error->description.find("org.freedesktop.Notifications"), std::string::npos)
        << error->description;
}

} // namespace
} // namespace orvalen::test

#include "DBusNotificationsTest.moc"
