#include "app/window/style/ColorScheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>

namespace orvalen {
namespace {

constexpr auto service = "org.freedesktop.portal.Desktop";
constexpr auto path = "/org/freedesktop/portal/desktop";
constexpr auto settings = "org.freedesktop.portal.Settings";
constexpr auto appearance = "org.freedesktop.appearance";
constexpr auto colorScheme = "color-scheme";
constexpr uint preferDark = 1;
constexpr uint preferLight = 2;

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QPalette darkPalette() {
    QPalette palette(QColor(0x2e, 0x2e, 0x33), QColor(0x1e, 0x1e, 0x21));
    palette.setColor(QPalette::Base, QColor(0x17, 0x17, 0x19));
    palette.setColor(QPalette::Highlight, QColor(0xff, 0x9f, 0x0a));
    palette.setColor(QPalette::HighlightedText, Qt::black);
    return palette;
}

/// The same colours, each of them set: the toolkit replaces those that are not by others than it came with.
QPalette allSet(const QPalette& palette) {
    QPalette result;
    for (int group = 0; group < QPalette::NColorGroups; ++group)
        for (int role = 0; role < QPalette::NColorRoles; ++role) {
            const auto inGroup = static_cast<QPalette::ColorGroup>(group);
            const auto inRole = static_cast<QPalette::ColorRole>(role);
            result.setBrush(inGroup, inRole, palette.brush(inGroup, inRole));
        }
    return result;
}

/// The setting stands in one variant or, from older portals, in two.
uint unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value.toUInt();
}

} // namespace

ColorScheme::ColorScheme() : given_(allSet(QGuiApplication::palette())) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    qRegisterMetaType<QDBusVariant>(); // or the signal's argument is looked for by its name and not found
    bus.connect(service, path, settings, "SettingChanged", this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage question = QDBusMessage::createMethodCall(service, path, settings, "Read");
    question << appearance << colorScheme;
    const auto* answer = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* done) {
        const QDBusPendingReply<QDBusVariant> reply = *done;
        if (reply.isValid())
            follow(unwrapped(reply.value().variant()));
        done->deleteLater();
    });
}

void ColorScheme::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group == appearance && key == colorScheme)
        follow(unwrapped(value.variant()));
}

void ColorScheme::follow(uint preference) {
    if (preference == preferDark && !isDark(given_))
        QGuiApplication::setPalette(darkPalette());
    else if (preference == preferLight && isDark(given_))
        QGuiApplication::setPalette(QPalette(QColor(0xef, 0xef, 0xef)));
    else
        QGuiApplication::setPalette(given_);
}

} // namespace orvalen
