#pragma once

#include <QDBusVariant>
#include <QObject>
#include <QPalette>
#include <QtQml/qqmlregistration.h>

class QJSEngine;
class QQmlEngine;

namespace orvalen {

/// Follows the desktop's choice of light or dark and of high contrast, which the toolkit does not: reads
/// org.freedesktop.appearance over D-Bus and sets the application's palette. The views see the one instance
/// as a singleton. Main thread.
class ColorScheme : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool highContrast READ highContrast NOTIFY highContrastChanged)
    /// The size of the application's font as a share of 11 points at 96 dots per inch.
    Q_PROPERTY(double textScale READ textScale CONSTANT)

public:
    /// `given` is the palette that the toolkit came with.
    explicit ColorScheme(const QPalette& given);
    ~ColorScheme() override;

    /// The instance for the views, which do not own it.
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
