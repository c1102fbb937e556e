#include "platform/desktop/ApplicationBus.h"

#include "desktop/BusService.h"
#include "desktop/EventLoop.h"
#include "support/TemporaryFolder.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDialog>
#include <QLocalServer>
#include <future>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace orvalen::test {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* name = "org.orvalen.Orvalen";
constexpr const char* path = "/org/orvalen/Orvalen";

/// Another program on the same bus.
class Peer {
public:
    Peer() = default;
    ~Peer() { QDBusConnection::disconnectFromBus("peer"); }
    Q_DISABLE_COPY(Peer)

    /// Calls the program and runs the event loop until the reply arrives.
    bool call(const char* method, const QVariantList& arguments) const {
        QDBusMessage message =
            QDBusMessage::createMethodCall(name, path, "org.freedesktop.Application", method);
        message.setArguments(arguments);
        const QDBusPendingCall answer = bus_.asyncCall(message, 5000);
        EXPECT_TRUE(turnUntil([&] { return answer.isFinished(); }));
        return !answer.isError();
    }
    bool open(const QStringList& uris) const { return call("Open", {uris, QVariantMap()}); }

private:
    QDBusConnection bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, "peer");
};

/// The requests that reached the program, in order.
struct Requests {
    void takeFrom(ApplicationBus& bus) {
        bus.serve([this] { done.emplace_back("raise"); },
                  [this](const QString& uri) { done.push_back(uri.toStdString()); });
    }
    std::vector<std::string> done;
};

TEST(ApplicationBus, PassesRequestsOnceItIsServedAndFromThenOn) {
    ApplicationBus program;
    ASSERT_EQ(program.claim(), ApplicationBus::Claim::first);
    const Peer peer;
    EXPECT_TRUE(peer.open({"file:///a.orvs", "file:///b.orvl"}));
    Requests requests;
    requests.takeFrom(program);
    EXPECT_THAT(requests.done, IsEmpty()) << "never within a caller";
    EXPECT_TRUE(turnUntil([&] { return requests.done.size() == 3; }));
    EXPECT_THAT(requests.done, ElementsAre("raise", "file:///a.orvs", "file:///b.orvl"));

    EXPECT_TRUE(peer.call("Activate", {QVariantMap{{"activation-token", "token-1"}}}));
    EXPECT_TRUE(turnUntil([&] { return requests.done.size() == 4; }));
    EXPECT_EQ(requests.done.back(), "raise");
    EXPECT_EQ(qgetenv("XDG_ACTIVATION_TOKEN"), "token-1");
    qunsetenv("XDG_ACTIVATION_TOKEN");
}

TEST(ApplicationBus, KeepsFilesBackWhileAModalDialogIsOpen) {
    ApplicationBus program;
    ASSERT_EQ(program.claim(), ApplicationBus::Claim::first);
    Requests requests;
    requests.takeFrom(program);
    const Peer peer;
    QDialog dialog;
    dialog.setModal(true);
    dialog.show();
    EXPECT_TRUE(peer.open({"file:///a.orvs"}));
    turnFor(250ms);
    EXPECT_THAT(requests.done, ElementsAre("raise"));
    dialog.close();
    EXPECT_TRUE(turnUntil([&] { return requests.done.size() == 2; }));
}

/// Represents the instance that was started first.
class Owner : public BusService {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    Owner() : BusService(name, path) {}

    QVariantMap given;
    QStringList opened;

public slots:
    Q_SCRIPTABLE void Activate(const QVariantMap& platformData) { given = platformData; }
    Q_SCRIPTABLE void Open(const QStringList& uris, const QVariantMap& platformData) {
        opened = uris;
        given = platformData;
    }
};

TEST(ApplicationBus, HandsASecondStartToTheFirst) {
    Owner owner;
    ApplicationBus program;
    EXPECT_EQ(program.claim(), ApplicationBus::Claim::second);
    qputenv("DESKTOP_STARTUP_ID", "startup-1");
    for (const QStringList& files : {QStringList(), QStringList("file:///a.orvs")}) {
        owner.given.clear();
        // In reality the owner is another process, which answers while the second start waits.
        auto activated = std::async(std::launch::async, [&] { return program.activateOwner(files); });
        EXPECT_TRUE(turnUntil([&] { return activated.wait_for(0ms) == std::future_status::ready; }));
        EXPECT_TRUE(activated.get());
        EXPECT_EQ(owner.given.value("desktop-startup-id").toString(), "startup-1");
        EXPECT_EQ(owner.opened, files);
    }
    qunsetenv("DESKTOP_STARTUP_ID");
}

TEST(ApplicationBus, SwitchesABusOffThatDoesNotAnswer) {
    const TemporaryFolder folder;
    QLocalServer silent;
    ASSERT_TRUE(silent.listen(QString::fromStdString(folder.path("bus"))));
    const QByteArray usual = qgetenv("DBUS_SESSION_BUS_ADDRESS");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + silent.fullServerName().toUtf8());
    EXPECT_EQ(ApplicationBus().claim(), ApplicationBus::Claim::noBus);
    EXPECT_EQ(qgetenv("DBUS_SESSION_BUS_ADDRESS"), "disabled:") << "each later use would wait for the bus";
    qputenv("DBUS_SESSION_BUS_ADDRESS", usual);
}

} // namespace
} // namespace orvalen::test

#include "ApplicationBusTest.moc"
