#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace orvalen {

/// Gathers the field changes of one turn of the event loop and tells the views once, at most sixty times a
/// second. Main thread.
class Announcer : public QObject {
    Q_OBJECT

public:
    Announcer();
    /// Asks for one turn; more calls before it comes change nothing.
    void wake();

signals:
    void turn();

private:
    void announce();

    QTimer timer_;
    QElapsedTimer sinceLast_;
};

} // namespace orvalen
