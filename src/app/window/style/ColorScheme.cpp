#include "app/window/style/ColorScheme.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QFontInfo>
#include <QGuiApplication>
#include <QJSEngine>

namespace orvalen {
namespace {

constexpr auto service = "org.freedesktop.portal.Desktop";
constexpr auto path = "/org/freedesktop/portal/desktop";
constexpr auto settings = "org.freedesktop.portal.Settings";
constexpr auto appearance = "org.freedesktop.appearance";
constexpr auto colorScheme = "color-scheme";
constexpr auto contrast = "contrast";
constexpr uint moreContrast = 1;
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

/// Returns a copy of the palette with every colour set explicitly. QGuiApplication::setPalette() fills unset
/// colours from the system's palette.
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

/// Returns the number inside the variant. Older desktop portals wrap it in two variants instead of one.
uint unwrapped(QVariant value) {
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value.toUInt();
}

ColorScheme* theInstance = nullptr;

} // namespace

ColorScheme::ColorScheme(const QPalette& given) : given_(allSet(given)) {
    theInstance = this;
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return;
    qRegisterMetaType<QDBusVariant>(); // otherwise Qt does not find the type of the signal's argument
    bus.connect(service, path, settings, "SettingChanged", this,
                SLOT(settingChanged(QString, QString, QDBusVariant)));
    ask(colorScheme);
    ask(contrast);
}

ColorScheme::~ColorScheme() {
    if (theInstance == this)
        theInstance = nullptr;
}

ColorScheme* ColorScheme::create(QQmlEngine*, QJSEngine*) {
    QJSEngine::setObjectOwnership(theInstance, QJSEngine::CppOwnership);
    return theInstance;
}

double ColorScheme::textScale() const {
    constexpr double usual = 11.0 * 96 / 72;
    return QFontInfo(QGuiApplication::font()).pixelSize() / usual;
}

void ColorScheme::ask(const QString& key) {
    QDBusMessage question = QDBusMessage::createMethodCall(service, path, settings, "Read");
    question << appearance << key;
    const auto* answer = new QDBusPendingCallWatcher(QDBusConnection::sessionBus().asyncCall(question), this);
    connect(answer, &QDBusPendingCallWatcher::finished, this, [this, key](QDBusPendingCallWatcher* done) {
        const QDBusPendingReply<QDBusVariant> reply = *done;
        if (reply.isValid())
            follow(key, reply.value().variant());
        done->deleteLater();
    });
}

void ColorScheme::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group == appearance)
        follow(key, value.variant());
}

void ColorScheme::follow(const QString& key, const QVariant& value) {
    if (key == colorScheme) {
        followScheme(unwrapped(value));
    } else if (key == contrast) {
        highContrast_ = unwrapped(value) == moreContrast;
        emit highContrastChanged();
    }
}

void ColorScheme::followScheme(uint preference) {
    if (preference == preferDark && !isDark(given_))
        QGuiApplication::setPalette(darkPalette());
    else if (preference == preferLight && isDark(given_))
        QGuiApplication::setPalette(QPalette(QColor(0xef, 0xef, 0xef)));
    else
        QGuiApplication::setPalette(given_);
}

} // namespace orvalen
