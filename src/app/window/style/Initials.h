#pragma once

#include <QObject>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

namespace orvalen {

/// Finds list entries by the letter that the user types. Written in C++ because qmllint 6.4 crashes on
/// chained calls of string methods. Main thread.
class Initials : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

public:
    using QObject::QObject;

    /// Returns the index of the first label after `from` that begins with `letter`, ignoring case. Continues
    /// at the first label; returns -1 when no label begins so. `from` may be -1.
    Q_INVOKABLE static int next(const QStringList& labels, const QString& letter, int from);
};

} // namespace orvalen
