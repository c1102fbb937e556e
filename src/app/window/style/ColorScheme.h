#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QPalette>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace orvalen {

/// Follows the desktop's settings for light or dark and for high contrast, which Qt 6.4 ignores. Reads them
/// from org.freedesktop.appearance over D-Bus. Sets the application's palette for light or dark. A singleton
/// in QML. Main thread.
class ColorScheme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool highContrast READ highContrast NOTIFY highContrastChanged)
    /// The size of the application's font relative to 11 points at 96 dots per inch.
    Q_PROPERTY(double textScale READ textScale CONSTANT)

public:
    /// `given` is Qt's own palette.
    explicit ColorScheme(const QPalette& given);
    ~ColorScheme() override;

    /// Returns the instance for QML, which does not own it.
    static ColorScheme* create(QQmlEngine* views, QJSEngine* scripts);

    bool highContrast() const { return highContrast_; }
    double textScale() const;

signals:
    void highContrastChanged();

private slots:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void ask(const QString& key);
    void follow(const QString& key, const QVariant& value);
    void followScheme(uint preference);

    bool highContrast_ = false;
    QPalette given_;
};

} // namespace orvalen
