#include "app/window/ColorScheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QGuiApplication>
#include <QPalette>

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

/// The setting stands in one variant or, from older portals, in two.
uint unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value.toUInt();
}

} // namespace

ColorScheme::ColorScheme() {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
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
    const bool dark = isDark(QGuiApplication::palette());
    if (preference == preferDark && !dark)
        QGuiApplication::setPalette(darkPalette());
    else if (preference == preferLight && dark)
        QGuiApplication::setPalette(QPalette());
}

} // namespace orvalen
