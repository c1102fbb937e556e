#include "platform/desktop/DBusNotifications.h"

#include "desktop/EventLoop.h"

#include <QDBusAbstractAdaptor>
#include <QDBusConnection>
#include <QDBusContext>
#include <QVariantMap>
#include <gtest/gtest.h>
#include <optional>

namespace orvalen::test {

/// A notification service as a desktop provides it.
class NotificationService : public QObject, protected QDBusContext {
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

private:
    QDBusConnection bus_;
};

namespace {

/// The outcome of a post, or nullopt before it arrives.
class Posting {
public:
    explicit Posting(const Notification& notification) {
        notifications_.post(notification,
                            [this](std::optional<Error> error) { outcome_ = std::move(error); });
        EXPECT_FALSE(outcome_) << "the outcome comes after the call";
    }
    std::optional<Error> error() {
        EXPECT_TRUE(turnUntil([&] { return outcome_.has_value(); }));
        return outcome_.value_or(std::nullopt);
    }

private:
    DBusNotifications notifications_;
    std::optional<std::optional<Error>> outcome_;
};

TEST(DBusNotifications, ReachTheServiceWithTheirTextsAndTheSound) {
    NotificationService service;
    EXPECT_FALSE(Posting({"id", "Serato Export", "Naïve – “text”"}).error());
    ASSERT_EQ(service.arrived.size(), 1U);
    EXPECT_EQ(service.arrived[0].title, "Serato Export");
    EXPECT_EQ(service.arrived[0].body, "Naïve – “text”");
    EXPECT_EQ(service.arrived[0].hints.value("sound-name").toString(), "message-new-instant");
}

TEST(DBusNotifications, DoNotWaitLongForAServiceThatHangs) {
    NotificationService service;
    service.answers = false;
    EXPECT_TRUE(Posting({"id", "title", "body"}).error());
    EXPECT_EQ(service.arrived.size(), 1U);
}

TEST(DBusNotifications, TellThatNobodyAnswers) {
    const auto error = Posting({"id", "title", "body"}).error();
    ASSERT_TRUE(error);
    EXPECT_NE(error->description.find("org.freedesktop.Notifications"), std::string::npos)
        << error->description;
}

} // namespace
} // namespace orvalen::test

#include "DBusNotificationsTest.moc"
