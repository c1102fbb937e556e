#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QPalette>

namespace orvalen {

/// Follows the desktop's wish for light or dark where the toolkit does not: the desktop tells it over D-Bus
/// (org.freedesktop.appearance), and the application's palette is made to agree. Main thread.
class ColorScheme : public QObject {
    Q_OBJECT

public:
    ColorScheme();

private slots:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void follow(uint preference);

    QPalette given_; ///< the palette that the toolkit came with
};

} // namespace orvalen
