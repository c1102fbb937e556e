#include "platform/desktop/ApplicationBus.h"

#include "platform/system/SessionBusProbe.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QTimer>
#include <QWidget>
#include <QWindow>
#include <utility>

namespace orvalen {

namespace {

constexpr const char* connectionName = "org.orvalen.Orvalen";
constexpr const char* busName = "org.orvalen.Orvalen";
constexpr const char* objectPath = "/org/orvalen/Orvalen";
constexpr const char* interfaceName = "org.freedesktop.Application";

constexpr std::chrono::milliseconds probeLimit{700};
constexpr int nameLimit = 300;   ///< milliseconds for the name request on a bus that answers
constexpr int ownerLimit = 5000; ///< milliseconds; the owner's main thread may be waiting for a slow drive
constexpr std::chrono::milliseconds modalRetry{200};

// Constants of the bus's own interface.
constexpr uint doNotQueue = 4;
constexpr uint primaryOwner = 1;
constexpr uint alreadyOwner = 4;

// Activation tokens: the desktop's permission for a window to take the focus. A launcher passes the token to
// this process, and this process passes it to the owner.
constexpr const char* waylandVariable = "XDG_ACTIVATION_TOKEN";
constexpr const char* waylandKey = "activation-token";
constexpr const char* startupVariable = "DESKTOP_STARTUP_ID";
constexpr const char* startupKey = "desktop-startup-id";

QVariantMap platformData() {
    QVariantMap data;
    for (const auto& [key, variable] :
         {std::pair(waylandKey, waylandVariable), std::pair(startupKey, startupVariable)})
        if (const QString value = qEnvironmentVariable(variable); !value.isEmpty())
            data.insert(key, value);
    return data;
}

/// Stores the token in the environment. Qt reads it there when a window requests the focus.
void keepActivationToken(const QVariantMap& platformData) {
    for (const char* key : {startupKey, waylandKey})
        if (const QByteArray token = platformData.value(key).toString().toUtf8(); !token.isEmpty())
            qputenv(waylandVariable, token);
}

} // namespace

ApplicationBus::~ApplicationBus() {
    QDBusConnection::disconnectFromBus(connectionName);
}

ApplicationBus::Claim ApplicationBus::claim() {
    switch (probeSessionBus(probeLimit)) {
    case BusAnswer::none:
        return Claim::noBus;
    case BusAnswer::silent:
        qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
        return Claim::noBus;
    case BusAnswer::answers:
        break;
    }
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, connectionName);
    // Registers the object first: requests may arrive as soon as this process owns the name.
    if (!bus.registerObject(objectPath, this, QDBusConnection::ExportScriptableSlots))
        return Claim::noBus;
    QDBusMessage call = QDBusMessage::createMethodCall("org.freedesktop.DBus", "/org/freedesktop/DBus",
                                                       "org.freedesktop.DBus", "RequestName");
    call << QString(busName) << doNotQueue;
    const QDBusMessage reply = bus.call(call, QDBus::Block, nameLimit);
    if (reply.type() != QDBusMessage::ReplyMessage)
        return Claim::noBus;
    const uint outcome = reply.arguments().value(0).toUInt();
    return outcome == primaryOwner || outcome == alreadyOwner ? Claim::first : Claim::second;
}

bool ApplicationBus::activateOwner(const QStringList& uris) {
    QDBusMessage call = QDBusMessage::createMethodCall(busName, objectPath, interfaceName,
                                                       uris.isEmpty() ? "Activate" : "Open");
    if (!uris.isEmpty())
        call << uris;
    call << platformData();
    const QDBusMessage reply = QDBusConnection(connectionName).call(call, QDBus::Block, ownerLimit);
    return reply.type() == QDBusMessage::ReplyMessage;
}

void ApplicationBus::serve(std::function<void()> raise, std::function<void(const QString&)> open) {
    raise_ = std::move(raise);
    open_ = std::move(open);
    answerLater();
}

void ApplicationBus::Activate(const QVariantMap& platformData) {
    keepActivationToken(platformData);
    raiseWanted_ = true;
    answerLater();
}

void ApplicationBus::Open(const QStringList& uris, const QVariantMap& platformData) {
    filesToOpen_ += uris;
    Activate(platformData);
}

void ApplicationBus::ActivateAction(const QString&, const QVariantList&, const QVariantMap& platformData) {
    Activate(platformData);
}

/// Runs answer() after the D-Bus reply was sent, because answer() may open a dialog.
void ApplicationBus::answerLater() {
    if (raise_ && !std::exchange(answerPending_, true))
        QTimer::singleShot(0, this, &ApplicationBus::answer);
}

void ApplicationBus::answer() {
    answerPending_ = false;
    if (std::exchange(raiseWanted_, false))
        raise_();
    while (!filesToOpen_.isEmpty()) {
        // Data that an open dialog is about to save or fill in must not be replaced.
        if (QApplication::activeModalWidget()) {
            answerPending_ = true;
            QTimer::singleShot(modalRetry, this, &ApplicationBus::answer);
            return;
        }
        open_(filesToOpen_.takeFirst());
    }
}

void bringToFront(QWindow& window) {
    QWidget* dialog = QApplication::activeModalWidget();
    QWindow& front = dialog && dialog->windowHandle() ? *dialog->windowHandle() : window;
    window.setWindowStates(window.windowStates() & ~Qt::WindowMinimized);
    window.raise();
    front.raise();
    front.requestActivate();
}

} // namespace orvalen
