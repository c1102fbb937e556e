#include "app/window/style/ColorScheme.h"

#include "desktop/BusService.h"

#include <QDBusMessage>
#include <QDBusVariant>
#include <QGuiApplication>
#include <QPalette>
#include <QTest>
#include <gtest/gtest.h>

namespace orvalen::test {

/// A settings portal as a desktop provides it.
class SettingsPortal : public BusService {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    SettingsPortal() : BusService("org.freedesktop.portal.Desktop", path) {}

    void change(uint to, const char* key = "color-scheme") {
        QDBusMessage signal =
            QDBusMessage::createSignal(path, "org.freedesktop.portal.Settings", "SettingChanged");
        signal << "org.freedesktop.appearance" << key << QVariant::fromValue(QDBusVariant(to));
        EXPECT_TRUE(bus_.send(signal));
    }

    uint scheme = 0;
    uint contrast = 0;

public slots:
    Q_SCRIPTABLE QDBusVariant Read(const QString&, const QString& key) {
        return QDBusVariant(QVariant::fromValue(
            QDBusVariant(key == "color-scheme" ? scheme : contrast))); // in two variants, as older portals do
    }

private:
    static constexpr auto path = "/org/freedesktop/portal/desktop";
};

namespace {

bool becomes(bool dark) {
    return QTest::qWaitFor([&] {
        const QPalette palette = QGuiApplication::palette();
        return (palette.color(QPalette::Window).lightness() <
                palette.color(QPalette::WindowText).lightness()) == dark;
    });
}

TEST(ColorScheme, FollowsTheDesktop) {
    SettingsPortal portal;
    portal.scheme = 1;
    portal.contrast = 1;
    const QColor given = QGuiApplication::palette().color(QPalette::Window);
    ASSERT_TRUE(becomes(false));
    const ColorScheme scheme(QGuiApplication::palette());
    EXPECT_TRUE(becomes(true)) << "what the desktop wished before the start";
    EXPECT_TRUE(QTest::qWaitFor([&] { return scheme.highContrast(); }));
    portal.change(2);
    EXPECT_TRUE(becomes(false));
    EXPECT_EQ(QGuiApplication::palette().color(QPalette::Window), given);
    portal.change(1);
    EXPECT_TRUE(becomes(true));
    portal.change(0);
    EXPECT_TRUE(becomes(false)) << "no wish: as the toolkit came";
    portal.change(0, "contrast");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !scheme.highContrast(); }));
}

} // namespace
} // namespace orvalen::test

#include "ColorSchemeTest.moc"
