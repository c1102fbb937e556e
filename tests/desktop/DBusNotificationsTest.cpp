#include "platform/desktop/DBusNotifications.h"

#include "desktop/EventLoop.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QVariantMap>
#include <gtest/gtest.h>

namespace orvalen::test {

/// What a desktop's notification service is to a program.
class NotificationService : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    NotificationService() : bus_(QDBusConnection::connectToBus(QDBusConnection::SessionBus, "service")) {
        EXPECT_TRUE(bus_.registerObject("/org/freedesktop/Notifications", this,
                                        QDBusConnection::ExportScriptableSlots));
        EXPECT_TRUE(bus_.registerService("org.freedesktop.Notifications"));
    }
    ~NotificationService() override {
        bus_.unregisterService("org.freedesktop.Notifications");
        QDBusConnection::disconnectFromBus("service");
    }
    NotificationService(const NotificationService&) = delete;
    NotificationService& operator=(const NotificationService&) = delete;

    struct Arrived {
        QString program;
        uint replaces;
        QString title;
        QString body;
        QStringList actions;
        QVariantMap hints;
    };
    std::vector<Arrived> arrived;

public slots:
    Q_SCRIPTABLE uint Notify(const QString& program, uint replaces, const QString&, const QString& title,
                             const QString& body, const QStringList& actions, const QVariantMap& hints, int) {
        arrived.push_back({program, replaces, title, body, actions, hints});
        return static_cast<uint>(arrived.size());
    }

private:
    QDBusConnection bus_;
};

namespace {

struct Outcomes {
    std::vector<std::optional<Error>> list;
    auto taker() {
        return [this](std::optional<Error> outcome) { list.push_back(std::move(outcome)); };
    }
};

TEST(DBusNotifications, ReachTheServiceWithTheirTextsAndTheSound) {
    NotificationService service;
    DBusNotifications notifications;
    Outcomes outcomes;
    notifications.post({"1B4E28BA-2FA1-11D2-883F-0016D3CCA427", "Serato Export", "Naïve – “text”"},
                       outcomes.taker());
    EXPECT_TRUE(outcomes.list.empty()) << "the outcome comes after the call";
    ASSERT_TRUE(turnUntil([&] { return !outcomes.list.empty(); }));
    EXPECT_FALSE(outcomes.list[0]) << outcomes.list[0]->description;
    ASSERT_EQ(service.arrived.size(), 1U);
    const auto& notification = service.arrived[0];
    EXPECT_EQ(notification.program, "Orvalen");
    EXPECT_EQ(notification.replaces, 0U);
    EXPECT_EQ(notification.title, "Serato Export");
    EXPECT_EQ(notification.body, "Naïve – “text”");
    EXPECT_TRUE(notification.actions.isEmpty());
    EXPECT_EQ(notification.hints.value("sound-name").toString(), "message-new-instant");
}

TEST(DBusNotifications, TellThatNobodyAnswers) {
    DBusNotifications notifications;
    Outcomes outcomes;
    notifications.post({"id", "title", "body"}, outcomes.taker());
    EXPECT_TRUE(outcomes.list.empty());
    ASSERT_TRUE(turnUntil([&] { return !outcomes.list.empty(); }));
    ASSERT_TRUE(outcomes.list[0]);
    EXPECT_NE(outcomes.list[0]->description.find("org.freedesktop.Notifications"), std::string::npos)
        << outcomes.list[0]->description;
}

} // namespace
} // namespace orvalen::test

#include "DBusNotificationsTest.moc"
